// CP950, the Big5 of the original toolkit.
#pragma once

#include <string>
#include <string_view>

/// CP950 bytes of a text. A character without a code becomes "?".
std::string ToBig5(std::string_view utf8);

/// Text of CP950 bytes. A pair without a character becomes U+FFFD. Throws RunTimeError when a lead byte
/// stands at the very end.
std::string FromBig5(std::string_view bytes);

/// Code of a character in CP950 as a signed 16-bit number: 0 to 127 for ASCII, negative for most Chinese
/// characters (lead byte times 256 plus trail byte, less 65536), 63 ("?") for one without a code.
int Asc(char16_t character);
