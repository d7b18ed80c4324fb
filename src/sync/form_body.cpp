#include "sync/form_body.h"

#include <fmt/format.h>

#include "base/text.h"
#include "base/utf16.h"
#include "platform/text_encoding.h"

namespace {

// Length in UTF-8 of the character that begins with this byte.
std::size_t LengthOf(unsigned char first) {
  if (first < 0xC0) return 1;
  if (first < 0xE0) return 2;
  return first < 0xF0 ? 3 : 4;
}

unsigned CodePointOf(std::string_view character) {
  constexpr unsigned kFirstPair = 0xD800;
  const std::u16string units = base::ToUtf16(character);
  if (units.size() < 2) return units.empty() ? 0U : units[0];
  return 0x10000U + ((units[0] - kFirstPair) << 10U) + (units[1] & 0x3FFU);
}

}  // namespace

std::string Big5FormText(std::string_view text) {
  std::string rest = base::Replace(base::Replace(text, "\r\n", "\n"), "\n", "\r\n");
  std::string bytes;
  for (std::size_t at = 0, length = 0; at < rest.size(); at += length) {
    length = LengthOf(static_cast<unsigned char>(rest[at]));
    const std::string character = rest.substr(at, length);
    const std::string big5 = ToBig5(character);
    bytes += big5 == "?" && character != "?" ? fmt::format("&#{};", CodePointOf(character)) : big5;
  }
  return bytes;
}
