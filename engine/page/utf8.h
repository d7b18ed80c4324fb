// Reading UTF-8 one character at a time.
#pragma once

#include <cstddef>
#include <string_view>

namespace tolvex {

struct Utf8Character {
  char32_t codePoint = 0xFFFD;
  std::size_t length = 1;  ///< bytes taken
  bool valid = false;
};

/// The character that begins at byte `at` (at < text.size()). A damaged sequence is U+FFFD, one byte long.
Utf8Character NextUtf8(std::string_view text, std::size_t at);

}  // namespace tolvex
