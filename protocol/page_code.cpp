#include "protocol/page_code.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <numeric>

#include "base/cp950.h"
#include "base/utf16.h"

namespace protocol {
namespace {

constexpr std::size_t kCheckDigits = 3;
constexpr std::size_t kPlainHead = 4;   // characters of P before its Base64
constexpr std::size_t kTurnDigits = 2;  // the number k after them
constexpr int kOffset = 35;
constexpr char kPadding = '+';
constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string CheckDigits(std::string_view packed) {
  const unsigned sum = std::accumulate(packed.begin(), packed.end(), 0U,
                                       [](unsigned total, unsigned char sign) { return total + sign; });
  return fmt::format("{:03}", sum % 999);
}

std::string ToBase64(std::string_view bytes) {
  std::string result;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const auto byte = [&](std::size_t k) {
      return i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U;
    };
    const unsigned group = byte(0) << 16 | byte(1) << 8 | byte(2);
    for (std::size_t k = 0; k < 4; ++k) {
      result += i + k > bytes.size() ? kPadding : kAlphabet[group >> (18 - 6 * k) & 63];
    }
  }
  return result;
}

/// Drops the padding. The sign is a digit of the alphabet too, but never the last one here: the text ends in
/// "O", which leaves "P", "8" or "w" as the last digit.
std::string_view WithoutPadding(std::string_view base64) {
  for (int i = 0; i < 2 && base64.ends_with(kPadding); ++i) base64.remove_suffix(1);
  return base64;
}

std::optional<std::string> FromBase64(std::string_view base64) {
  if (base64.size() % 4 != 0) return std::nullopt;
  std::string text;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char digit : WithoutPadding(base64)) {
    const std::size_t value = kAlphabet.find(digit);
    if (value == std::string_view::npos) return std::nullopt;
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    count += 6;
    if (count >= 8) {
      count -= 8;
      text += static_cast<char>(bits >> count & 0xFF);
    }
  }
  return text;
}

std::string Turned(const std::string& text) {
  if (text.size() < kPlainHead) return text;
  const std::string base64 = ToBase64(text);
  const std::size_t k = base64.size() % 7 + 1;
  return fmt::format("{}{:02X}{}{}", text.substr(0, kPlainHead), k, base64.substr(k - 1),
                     base64.substr(0, k - 1));
}

std::optional<std::string> Unturned(std::string_view packed) {
  if (packed.size() < kPlainHead) return std::string(packed);
  if (packed.size() < kPlainHead + kTurnDigits) return std::nullopt;
  std::string base64(packed.substr(kPlainHead + kTurnDigits));
  const std::size_t k = base64.size() % 7 + 1;
  if (packed.substr(kPlainHead, kTurnDigits) != fmt::format("{:02X}", k) || base64.size() < k) {
    return std::nullopt;
  }
  std::rotate(base64.begin(), base64.end() - static_cast<std::ptrdiff_t>(k - 1), base64.end());
  auto text = FromBase64(base64);
  if (text && !text->starts_with(packed.substr(0, kPlainHead))) return std::nullopt;
  return text;
}

/// The sum of a code and the offset, or nothing when it is not written as it should be.
std::optional<int> SumOf(std::string_view digits) {
  const bool isHex = digits.find_first_not_of("0123456789ABCDEF") == std::string_view::npos;
  if (!isHex || digits.empty() || digits.size() > 4 || (digits.size() > 1 && digits[0] == '0'))
    return std::nullopt;
  std::uint16_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return static_cast<std::int16_t>(value);
}

bool AppendCharacter(std::string_view digits, std::string& page) {
  const auto sum = SumOf(digits);
  if (!sum) return false;
  const int code = *sum - kOffset;
  const int lead = code >> 8 & 0xFF;
  const int trail = code & 0xFF;
  if (code < 0) page += static_cast<char>(lead);
  page += static_cast<char>(trail);
  return code < 0 ? lead > 0x80 && lead < 0xFF && trail >= 0x40 : code <= 0xFF;
}

}  // namespace

std::string EncodePage(std::string_view utf8) {
  std::string text;
  for (const char16_t character : base::ToUtf16(utf8)) {
    text += fmt::format("{:X}O", static_cast<std::uint16_t>(base::Asc(character) + kOffset));
  }
  const std::string packed = Turned(text);
  return packed + CheckDigits(packed);
}

std::optional<std::string> DecodePage(std::string_view code) {
  if (code.size() < kCheckDigits) return std::nullopt;
  const std::string_view packed = code.substr(0, code.size() - kCheckDigits);
  if (CheckDigits(packed) != code.substr(packed.size())) return std::nullopt;
  const auto text = Unturned(packed);
  if (!text || (!text->empty() && text->back() != 'O')) return std::nullopt;
  std::string page;
  for (std::size_t at = 0; at < text->size();) {
    const std::size_t end = text->find('O', at);
    if (!AppendCharacter(std::string_view(*text).substr(at, end - at), page)) return std::nullopt;
    at = end + 1;
  }
  return page;
}

}  // namespace protocol
