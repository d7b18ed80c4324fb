// UTF-8, read and written one character at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

struct Utf8Character {
  char32_t codePoint = kReplacementCharacter;
  std::size_t length = 1;  ///< bytes taken
  bool valid = false;
};

/// The character that begins at byte `at` (at < text.size()), after the table of well-formed byte sequences
/// of the Unicode Standard (table 3-7). A damaged one is U+FFFD and as long as it could have been a
/// character.
Utf8Character NextUtf8(std::string_view text, std::size_t at);

/// Appends a character. A surrogate and what is beyond U+10FFFF become U+FFFD.
void AppendUtf8(std::string& text, char32_t codePoint);

/// Well-formed UTF-8, whatever its characters.
bool IsUtf8(std::string_view text);

/// The text with U+FFFD in place of what is not well-formed.
std::string WellFormedUtf8(std::string_view text);

/// Well-formed UTF-8 without control characters (up to U+001F, and U+007F) other than the allowed ones.
bool IsCleanText(std::string_view text, std::string_view allowed = {});

/// Characters of well-formed UTF-8.
std::size_t CountCharacters(std::string_view text);

}  // namespace base
