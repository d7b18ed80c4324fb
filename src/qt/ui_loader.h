// Reads .ui files of the form designer.
#pragma once

#include <QWidget>

namespace marovane {

/// The window of a file; the caller owns it. Throws RunTimeError when the file is missing or broken.
QWidget* LoadUi(const QString& path);

}  // namespace marovane
