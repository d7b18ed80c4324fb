// Texts of records on their way to the program: Big5 replies with separators, and nothing lost.
#pragma once

#include <string>
#include <string_view>

namespace server {

/// CP950 bytes of a text. Stored texts have no apostrophe (the program stores U+2019 in its place), so it is
/// free to write what the reply cannot hold: '1F600' is the character of that hexadecimal code. Written so
/// are characters that Big5 lacks or gives back as another one, `#`, `<`, `|`, the apostrophe itself, and
/// control characters other than line ends.
std::string WireText(std::string_view utf8);

/// The UTF-8 text of which the program has written some characters in the same way.
std::string PlainText(std::string_view written);

}  // namespace server
