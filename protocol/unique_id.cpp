#include "protocol/unique_id.h"

#include <fmt/format.h>

#include <algorithm>
#include <random>

namespace protocol {

std::string UniqueIds::Next(base::UtcTime now) {
  constexpr base::UtcTime kEpoch = std::chrono::sys_days{std::chrono::year{2006} / 1 / 1};
  constexpr int kMostInAMillisecond = 1000;
  constexpr unsigned kRandom = 100'000'000;
  if (random_.empty()) random_ = fmt::format("{:08}", std::random_device{}() % kRandom);
  now = std::max(now, kEpoch);
  if (now > time_) {
    time_ = now;
    number_ = 0;
  } else if (++number_ == kMostInAMillisecond) {
    ++time_;
    number_ = 0;
  }
  return fmt::format("9{:013}{:03}{}", (time_ - kEpoch).count(), number_, random_);
}

bool IsUniqueId(std::string_view text) {
  constexpr std::size_t kLength = 25;
  return text.size() == kLength &&
         std::ranges::all_of(text, [](char sign) { return sign >= '0' && sign <= '9'; });
}

}  // namespace protocol
