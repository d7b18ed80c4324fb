#include "engine/page/utf8.h"

namespace tolvex {

Utf8Character NextUtf8(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return {};
  char32_t value = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[at + i]);
    if ((next & 0xC0U) != 0x80) return {};
    value = (value << 6) | (next & 0x3FU);
  }
  static constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (value < kLeast[length] || value > 0x10FFFF || surrogate) return {};
  return {value, length, true};
}

}  // namespace tolvex
