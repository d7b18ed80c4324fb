#include "protocol/record_form.h"

#include <algorithm>

namespace protocol {

namespace {

constexpr std::size_t kLongest = 64;

bool IsDigit(char sign) { return sign >= '0' && sign <= '9'; }

bool IsIdSign(char sign) {
  const char letter = static_cast<char>(sign | 0x20);
  return IsDigit(sign) || (letter >= 'a' && letter <= 'z') || sign == '.' || sign == '_' || sign == '-';
}

bool ContinuesCharacter(char byte) { return (byte & 0xC0) == 0x80; }

}  // namespace

bool IsRecordNumber(std::string_view text) {
  return text.size() <= kLongest && std::ranges::all_of(text, IsDigit);
}

bool IsRecordId(std::string_view text) {
  return text.size() <= kLongest && std::ranges::all_of(text, IsIdSign);
}

bool IsFlag(std::string_view text, std::string_view known) {
  return text.size() == 1 && known.find(text) != std::string_view::npos;
}

// Databases clean their old rows alike (see the server's schema), and they take a text to end at a zero byte.
std::string CleanRecordId(std::string_view text) {
  std::string id;
  std::size_t characters = 0;
  for (const char sign : text.substr(0, text.find('\0'))) {
    if (!ContinuesCharacter(sign) && ++characters > kLongest) break;
    if (IsIdSign(sign)) id += sign;
  }
  return id;
}

std::string CleanFlag(std::string_view text, std::string_view known) {
  return std::string(IsFlag(text, known) ? text : "N");
}

}  // namespace protocol
