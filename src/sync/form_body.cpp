#include "sync/form_body.h"

#include <fmt/format.h>

#include <cctype>

#include "core/text_utility.h"
#include "platform/text_encoding.h"

namespace {

void Encode(std::string& body, std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const char sign : text) {
    const auto byte = static_cast<unsigned char>(sign);
    const bool isPlain =
        byte < 0x80 && (std::isalnum(byte) != 0 || sign == '*' || sign == '-' || sign == '.' || sign == '_');
    if (isPlain) {
      body += sign;
    } else if (sign == ' ') {
      body += '+';
    } else {
      body += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
  }
}

// Length in UTF-8 of the character that begins with this byte.
std::size_t LengthOf(unsigned char first) {
  if (first < 0xC0) return 1;
  if (first < 0xE0) return 2;
  return first < 0xF0 ? 3 : 4;
}

unsigned CodePointOf(std::string_view character) {
  constexpr unsigned kFirstPair = 0xD800;
  const std::u16string units = ToUtf16(character);
  if (units.size() < 2) return units.empty() ? 0U : units[0];
  return 0x10000U + ((units[0] - kFirstPair) << 10U) + (units[1] & 0x3FFU);
}

}  // namespace

void AddField(std::string& body, std::string_view name, std::string_view value) {
  if (!body.empty()) body += '&';
  Encode(body, name);
  body += '=';
  Encode(body, value);
}

std::string Big5FormText(std::string_view text) {
  std::string rest = Replace(Replace(text, "\r\n", "\n"), "\n", "\r\n");
  std::string bytes;
  for (std::size_t at = 0, length = 0; at < rest.size(); at += length) {
    length = LengthOf(static_cast<unsigned char>(rest[at]));
    const std::string character = rest.substr(at, length);
    const std::string big5 = ToBig5(character);
    bytes += big5 == "?" && character != "?" ? fmt::format("&#{};", CodePointOf(character)) : big5;
  }
  return bytes;
}
