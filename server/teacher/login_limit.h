// How often a wrong password may be tried at the teachers' login.
#pragma once

#include <mutex>
#include <string>
#include <unordered_map>

#include "server/teacher/sessions.h"

namespace server {

/// Tries are counted for each login name and for each address: ten in a row are free for a name, then one
/// every half minute; thirty for an address, then one every five seconds. Ten thousand of each are
/// remembered; a new one then takes the place of the one that was tried the longest time ago. May be used
/// from several threads.
class LoginLimit {
 public:
  explicit LoginLimit(SteadyClock clock) : clock_(std::move(clock)) {}

  /// Takes a try; false when none is left. To be asked before the password is hashed.
  bool CountTry(const std::string& login, const std::string& address);
  /// The password was right.
  void UncountTry(const std::string& login, const std::string& address);

 private:
  struct Tries {
    double left;
    std::chrono::steady_clock::time_point at;
  };
  struct Counter {
    double free;
    double perSecond;
    std::unordered_map<std::string, Tries> tries = {};
  };
  Tries& Refilled(Counter& counter, const std::string& key);

  SteadyClock clock_;
  std::mutex mutex_;
  Counter logins_{10, 1.0 / 30};
  Counter addresses_{30, 1.0 / 5};
};

}  // namespace server
