#include "base/utf16.h"

#include "base/utf8.h"

namespace base {
namespace {

bool IsHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string text;
  text.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const auto [code, length, valid] = NextUtf8(utf8, at);
    at += length;
    if (code < 0x10000) {
      text += static_cast<char16_t>(code);
    } else {
      text += static_cast<char16_t>(0xD7C0 + (code >> 10));
      text += static_cast<char16_t>(0xDC00 | (code & 0x3FF));
    }
  }
  return text;
}

std::string ToUtf8(std::u16string_view utf16) {
  std::string text;
  text.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    const char16_t unit = utf16[i];
    if (IsHigh(unit) && i + 1 < utf16.size() && IsLow(utf16[i + 1])) {
      ++i;
      AppendUtf8(text, 0x10000 + ((unit & 0x3FFU) << 10) + (utf16[i] & 0x3FFU));
    } else {
      AppendUtf8(text, unit);  // half a pair is no character
    }
  }
  return text;
}

}  // namespace base
