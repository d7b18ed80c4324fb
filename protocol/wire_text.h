// Texts of records where a format has separators and its character set is Big5.
#pragma once

#include <string>
#include <string_view>

namespace protocol {

/// The text with some characters written: '1F600' is the character of that hexadecimal code. Stored texts
/// have no apostrophe, so it is free for this. Characters written so are those that CP950 lacks or returns as
/// another one, "#", "<", "|", the apostrophe itself, and control characters other than line ends.
std::string WireText(std::string_view text);

/// The text of which some characters were written. An apostrophe elsewhere means itself.
std::string PlainText(std::string_view written);

}  // namespace protocol
