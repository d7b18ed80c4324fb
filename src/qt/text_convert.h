// Texts between the models (UTF-8) and Qt.
#pragma once

#include <QString>
#include <string>

namespace marovane {

inline QString Text(const std::string& utf8) {
  return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}
inline std::string Utf8(const QString& text) { return text.toStdString(); }
/// With plain line feeds, as widgets want them.
inline QString Lines(const std::string& utf8) { return Text(utf8).replace("\r\n", "\n"); }

}  // namespace marovane
