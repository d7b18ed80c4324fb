#include "protocol/account.h"

#include <algorithm>

#include "base/text.h"

namespace protocol {
namespace {

constexpr std::size_t kLongestNumber = 32;

bool IsNumberSign(char sign) {
  return (sign >= '0' && sign <= '9') || (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
         sign == '.' || sign == '_';
}

}  // namespace

std::string CleanAccount(std::string_view number) {
  return base::Replace(base::Replace(number, "-", ""), " ", "");
}

bool IsAccountNumber(std::string_view number) {
  return !number.empty() && number.size() <= kLongestNumber && std::ranges::all_of(number, IsNumberSign);
}

bool IsPassword(std::string_view text) {
  return text.size() >= kShortestPassword && text.size() <= kLongestPassword && text.front() != ' ' &&
         text.back() != ' ' &&
         std::ranges::all_of(text, [](char sign) { return sign >= ' ' && sign <= '~'; });
}

}  // namespace protocol
