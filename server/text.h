// Character sets and small text work of the server.
#pragma once

#include <string>
#include <string_view>

namespace marovane {

/// Well-formed UTF-8 without control characters: what a field of a request may hold.
bool IsCleanText(std::string_view text);

/// Well-formed UTF-8, whatever its characters.
bool IsUtf8(std::string_view text);

/// CP950 bytes of a UTF-8 text. A character without a code becomes "?".
std::string ToBig5(std::string_view utf8);

/// UTF-8 of CP950 bytes; "?" for what is none.
std::string FromBig5(std::string_view bytes);

/// Without the blanks, tabs and line ends around it.
std::string Trim(std::string_view text);

/// The text with every `from` replaced by `to`.
std::string Replace(std::string_view text, std::string_view from, std::string_view to);

/// Bytes of "%41" written out. A "%" without two hexadecimal digits behind it stands for itself.
std::string PercentDecode(std::string_view text);

}  // namespace marovane
