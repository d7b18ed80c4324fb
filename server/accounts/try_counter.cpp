#include "server/accounts/try_counter.h"

#include <algorithm>

namespace server {

// What is left now, with all that has come back.
double& TryCounter::Left(const std::string& name) {
  constexpr std::size_t kMostRemembered = 10000;
  const auto now = clock_();
  if (tries_.size() >= kMostRemembered && !tries_.contains(name)) {
    tries_.erase(std::ranges::min_element(tries_, {}, [](const auto& each) { return each.second.at; }));
  }
  Tries& tries = tries_.try_emplace(name, Tries{free_, now}).first->second;
  const std::chrono::duration<double> seconds = now - tries.at;
  tries = {std::min(free_, tries.left + seconds.count() * perSecond_), now};
  return tries.left;
}

}  // namespace server
