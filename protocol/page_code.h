// The packing in which the program sends a result page to the server, to have it shown.
//
// A packed page is E and three check digits: the sum of E's codes modulo 999. E is P when P has fewer than
// four characters. Otherwise E is the first four characters of P, two upper-case hexadecimal digits k, and
// the Base64 (RFC 4648, but padded with "+") of P, turned left by k - 1 characters; k is the length of the
// Base64 modulo 7, plus 1. P holds for each character of the page its CP950 code, as a signed 16-bit number,
// plus 35, in upper-case hexadecimal without leading zeros (a negative sum as its four digits of two's
// complement), and the letter "O".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace protocol {

/// The code of a page. A character that CP950 lacks counts as "?", half by half when it takes two UTF-16
/// units.
std::string EncodePage(std::string_view utf8);

/// The CP950 bytes of a packed page; nothing when the code is damaged.
std::optional<std::string> DecodePage(std::string_view code);

}  // namespace protocol
