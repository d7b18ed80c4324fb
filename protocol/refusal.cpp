#include "protocol/refusal.h"

#include <algorithm>
#include <array>

namespace protocol::refusal {

bool IsFinal(std::string_view reply) {
  constexpr std::array<std::string_view, 16> kFinal{
      kWrongKey,      kMissingField,    kTooLong,       kBadText,       kBadAccount, kNotFound,
      kWrongPassword, kClosed,          kWrongEmail,    kUnknownMethod, kUnknownAct, kUnknownType,
      kUnknownKind,   kUnknownLanguage, kUnknownStream, kBadDigest};
  return std::ranges::find(kFinal, reply) != kFinal.end();
}

bool IsOfAccount(std::string_view reply) { return reply == kBadAccount || reply == kNotFound; }

bool IsOfRows(std::string_view reply) {
  return reply == kBadText || reply == kUnknownKind || reply == kTooLong;
}

}  // namespace protocol::refusal
