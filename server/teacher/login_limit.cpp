#include "server/teacher/login_limit.h"

#include <algorithm>

namespace server {

constexpr std::size_t kMostRemembered = 10000;

LoginLimit::Tries& LoginLimit::Refilled(Counter& counter, const std::string& key) {
  const auto now = clock_();
  auto& known = counter.tries;
  if (known.size() >= kMostRemembered && !known.contains(key)) {
    known.erase(std::min_element(known.begin(), known.end(),
                                 [](const auto& a, const auto& b) { return a.second.at < b.second.at; }));
  }
  Tries& tries = known.try_emplace(key, Tries{counter.free, now}).first->second;
  const std::chrono::duration<double> seconds = now - tries.at;
  tries = {std::min(counter.free, tries.left + seconds.count() * counter.perSecond), now};
  return tries;
}

bool LoginLimit::CountTry(const std::string& login, const std::string& address) {
  const std::lock_guard lock(mutex_);
  Tries& ofLogin = Refilled(logins_, login);
  Tries& ofAddress = Refilled(addresses_, address);
  if (ofLogin.left < 1 || ofAddress.left < 1) return false;
  ofLogin.left -= 1;
  ofAddress.left -= 1;
  return true;
}

void LoginLimit::UncountTry(const std::string& login, const std::string& address) {
  const std::lock_guard lock(mutex_);
  Refilled(logins_, login).left += 1;
  Refilled(addresses_, address).left += 1;
}

}  // namespace server
