#include "base/utf8.h"

#include <algorithm>

namespace base {
namespace {

struct Lead {
  std::size_t length;  // bytes of the character; 0: no lead byte
  char32_t bits;       // its share of the code point
  unsigned lowest;     // bounds of the second byte, which exclude overlong forms and surrogates
  unsigned highest;
};

Lead Classify(unsigned byte) {
  if (byte < 0x80) return {1, byte, 0, 0};
  if (byte < 0xC2 || byte > 0xF4) return {0, 0, 0, 0};
  if (byte < 0xE0) return {2, byte & 0x1F, 0x80, 0xBF};
  if (byte < 0xF0) return {3, byte & 0x0F, byte == 0xE0 ? 0xA0U : 0x80U, byte == 0xED ? 0x9FU : 0xBFU};
  return {4, byte & 0x07, byte == 0xF0 ? 0x90U : 0x80U, byte == 0xF4 ? 0x8FU : 0xBFU};
}

/// Whether each character is well formed and passes the test.
template <class Test>
bool All(std::string_view text, const Test& passes) {
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = NextUtf8(text, at);
    if (!character.valid || !passes(character.codePoint)) return false;
    at += character.length;
  }
  return true;
}

}  // namespace

Utf8Character NextUtf8(std::string_view text, std::size_t at) {
  const Lead lead = Classify(static_cast<unsigned char>(text[at]));
  char32_t code = lead.bits;
  for (std::size_t i = 1; i < lead.length; ++i) {
    const unsigned byte = at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0;
    if (byte < (i == 1 ? lead.lowest : 0x80) || byte > (i == 1 ? lead.highest : 0xBF)) return {.length = i};
    code = code << 6 | (byte & 0x3F);
  }
  return lead.length == 0 ? Utf8Character{} : Utf8Character{code, lead.length, true};
}

void AppendUtf8(std::string& text, char32_t codePoint) {
  const bool isCharacter = codePoint < 0xD800 || (codePoint >= 0xE000 && codePoint < 0x110000);
  const char32_t code = isCharacter ? codePoint : kReplacementCharacter;
  const auto add = [&text](char32_t byte) { text += static_cast<char>(byte); };
  const auto addTail = [&](int shift) { add(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) return add(code);
  if (code < 0x800) {
    add(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    add(0xE0 | code >> 12);
    addTail(6);
  } else {
    add(0xF0 | code >> 18);
    addTail(12);
    addTail(6);
  }
  addTail(0);
}

std::string WellFormedUtf8(std::string_view text) {
  if (IsUtf8(text)) return std::string(text);
  std::string wellFormed;
  for (std::size_t at = 0; at < text.size();) {
    const auto [codePoint, length, valid] = NextUtf8(text, at);
    AppendUtf8(wellFormed, codePoint);
    at += length;
  }
  return wellFormed;
}

bool IsUtf8(std::string_view text) {
  return All(text, [](char32_t) { return true; });
}

bool IsCleanText(std::string_view text, std::string_view allowed) {
  return All(text, [allowed](char32_t sign) {
    return (sign >= 0x20 && sign != 0x7F) || allowed.find(static_cast<char>(sign)) != std::string_view::npos;
  });
}

std::size_t CountCharacters(std::string_view text) {
  const auto begins = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
  return static_cast<std::size_t>(std::ranges::count_if(text, begins));
}

}  // namespace base
