#include "base/percent.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "base/utf16.h"

namespace base {
namespace {

bool IsLetterOrDigit(char sign) {
  return (sign >= '0' && sign <= '9') || (sign >= 'A' && sign <= 'Z') || (sign >= 'a' && sign <= 'z');
}

std::string Encoded(char sign) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(sign);
  return {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
}

/// The value of the two hexadecimal digits, or -1.
int HexPair(std::string_view digits) {
  int value = -1;
  const char* end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, value, 16);
  return digits.size() == 2 && read.ptr == end && digits[0] != '-' ? value : -1;
}

}  // namespace

std::string FormEncode(std::string_view bytes, std::string_view plainSigns) {
  std::string encoded;
  for (const char sign : bytes) {
    if (IsLetterOrDigit(sign) || plainSigns.find(sign) != std::string_view::npos) {
      encoded += sign;
    } else {
      encoded += sign == ' ' ? "+" : Encoded(sign);
    }
  }
  return encoded;
}

std::string PercentEncode(std::string_view text, std::string_view signs) {
  std::string encoded;
  for (const char sign : text)
    encoded += signs.find(sign) == std::string_view::npos ? std::string(1, sign) : Encoded(sign);
  return encoded;
}

std::string EncodeMarked(std::string_view text, std::string_view signs) {
  const bool isMisread =
      text.find_first_of(signs) != std::string_view::npos || DecodeMarked(text, signs) != text;
  return isMisread ? PercentEncode(text, std::string(signs) + "%") : std::string(text);
}

std::string DecodeMarked(std::string_view text, std::string_view signs) {
  const bool isEncoded = std::ranges::any_of(std::string(signs) + "%", [text](char sign) {
    const std::string one(1, sign);
    return text.find(PercentEncode(one, one)) != std::string_view::npos;
  });
  return isEncoded ? PercentDecode(text) : std::string(text);
}

std::string PercentDecode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int value = text[at] == '%' ? HexPair(text.substr(at + 1, 2)) : -1;
    decoded += value < 0 ? text[at] : static_cast<char>(value);
    if (value >= 0) at += 2;
  }
  return decoded;
}

std::string UrlEncodeUtf8(std::string_view text) {
  std::string result;
  for (const char16_t unit : ToUtf16(text)) {
    const unsigned code = unit;
    if (code < 0x80) {
      result += static_cast<char>(code);
    } else if (code < 0x1000) {
      result += fmt::format("%{:X}%{:X}", 192 | code / 64, 128 | (code & 63));
    } else {
      result += fmt::format("%{:X}%{:X}%{:X}", 224 | code / 4096, 128 | (code / 64 & 63), 128 | (code & 63));
    }
  }
  return result;
}

}  // namespace base
