// UTF-8 and UTF-16, after the table of well-formed byte sequences of the Unicode Standard (table 3-7).
#include <cstddef>

#include "platform/text_encoding.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Lead {
  int following;    // how many bytes come behind it; -1: no lead byte
  char32_t bits;    // its share of the code point
  unsigned lowest;  // bounds of the first byte behind it, which exclude overlong forms and surrogates
  unsigned highest;
};

Lead Classify(unsigned byte) {
  if (byte < 0x80) return {0, byte, 0, 0};
  if (byte < 0xC2 || byte > 0xF4) return {-1, 0, 0, 0};
  if (byte < 0xE0) return {1, byte & 0x1F, 0x80, 0xBF};
  if (byte < 0xF0) return {2, byte & 0x0F, byte == 0xE0 ? 0xA0U : 0x80U, byte == 0xED ? 0x9FU : 0xBFU};
  return {3, byte & 0x07, byte == 0xF0 ? 0x90U : 0x80U, byte == 0xF4 ? 0x8FU : 0xBFU};
}

// Takes the code point at the position and steps over it; over as much as could have been one when it is
// malformed.
char32_t Next(std::string_view text, std::size_t& at) {
  const Lead lead = Classify(static_cast<unsigned char>(text[at++]));
  if (lead.following < 0) return kReplacement;
  char32_t code = lead.bits;
  for (int i = 0; i < lead.following; ++i) {
    const unsigned byte = at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
    if (byte < (i == 0 ? lead.lowest : 0x80) || byte > (i == 0 ? lead.highest : 0xBF)) return kReplacement;
    code = code << 6 | (byte & 0x3F);
    ++at;
  }
  return code;
}

void AppendUtf8(std::string& text, char32_t code) {
  const auto add = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0 | code >> 6);
    add(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    add(0xE0 | code >> 12);
    add(0x80 | (code >> 6 & 0x3F));
    add(0x80 | (code & 0x3F));
  } else {
    add(0xF0 | code >> 18);
    add(0x80 | (code >> 12 & 0x3F));
    add(0x80 | (code >> 6 & 0x3F));
    add(0x80 | (code & 0x3F));
  }
}

bool IsHigh(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLow(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string text;
  text.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t code = Next(utf8, at);
    if (code < 0x10000) {
      text.push_back(static_cast<char16_t>(code));
    } else {
      text.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
      text.push_back(static_cast<char16_t>(0xDC00 | (code & 0x3FF)));
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
      AppendUtf8(text, IsHigh(unit) || IsLow(unit) ? kReplacement : unit);
    }
  }
  return text;
}
