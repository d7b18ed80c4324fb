// CP950, the Big5 of the original toolkit and of all pages and replies on the wire.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// What a character becomes that has no code in CP950.
enum class Unencodable {
  kQuestionMark,
  kReference,  ///< a numeric reference of HTML, "&#128512;"
};

/// CP950 bytes of a text.
std::string ToCp950(std::string_view utf8, Unencodable unencodable = Unencodable::kQuestionMark);

/// What bytes become that are no character of CP950.
enum class Undecodable {
  kReplacement,   ///< U+FFFD for each pair, and for a lead byte at the very end
  kErrorAtEnd,    ///< U+FFFD for each pair; a lead byte at the very end throws Error
  kQuestionMark,  ///< "?" for each byte that begins no character
};

/// Text of CP950 bytes.
std::string FromCp950(std::string_view bytes, Undecodable undecodable = Undecodable::kErrorAtEnd);

/// The two bytes of a character in CP950 as one number, below 0x80 the character itself; 0 when it has no
/// code.
std::uint16_t Cp950CodeOf(char32_t character);

/// The character of a double-byte code; 0 when there is none.
char16_t CharacterOfCp950(std::uint16_t code);

/// The first character of a text that CP950 lacks; empty when it has them all.
std::string_view FirstNotInCp950(std::string_view utf8);

/// Code of a character in CP950 as a signed 16-bit number: 0 to 127 for ASCII, negative for most Chinese
/// characters (lead byte times 256 plus trail byte, less 65536), 63 ("?") for one without a code.
int Asc(char16_t character);

}  // namespace base
