// How often a wrong password may be tried at the teachers' login.
#pragma once

#include <mutex>
#include <string>

#include "server/accounts/try_counter.h"

namespace server {

/// Tries are counted for each login name and for each address: ten in a row are free for a name, then one
/// every half minute; thirty for an address, then one every five seconds. May be used from several threads.
class LoginLimit {
 public:
  explicit LoginLimit(const SteadyClock& clock)
      : logins_(10, 1.0 / 30, clock), addresses_(30, 1.0 / 5, clock) {}

  /// Uses up a try; false when none is left. To be asked before the password is hashed.
  bool CountTry(const std::string& login, const std::string& address) {
    const std::lock_guard lock(mutex_);
    if (!logins_.IsOneLeft(login) || !addresses_.IsOneLeft(address)) return false;
    logins_.Count(login);
    addresses_.Count(address);
    return true;
  }
  /// The password was right.
  void UncountTry(const std::string& login, const std::string& address) {
    const std::lock_guard lock(mutex_);
    logins_.Uncount(login);
    addresses_.Uncount(address);
  }

 private:
  std::mutex mutex_;
  TryCounter logins_, addresses_;
};

}  // namespace server
