// The fonts that the windows use, and substitutes for fonts that this platform does not have.
#pragma once

#include <QFont>
#include <QStringList>

namespace marovane {

/// The families to try for a wanted one, best first: the font itself or its stand-in, then the ones that
/// have the Chinese characters in their Taiwanese forms.
QStringList FontFamilies(const QString& wanted);

/// A font of a size in points of 96 dots per inch, which the desktop scales.
QFont MakeFont(const QString& family, int points);

/// Makes the program's own font the one that widgets begin with, and registers the stand-ins.
void InstallFonts();

}  // namespace marovane
