// How often a wrong password may be tried.
#pragma once

#include <mutex>
#include <string>

#include "server/accounts/try_counter.h"

namespace server {

/// Tries are counted for each account and for each address. Ten in a row are free for an account; thirty for
/// an address, then one every five seconds. May be used from several threads.
class LoginLimit {
 public:
  /// @param perSecond tries that come back to an account
  LoginLimit(double perSecond, const SteadyClock& clock)
      : accounts_(10, perSecond, clock), addresses_(30, 1.0 / 5, clock) {}

  /// Uses up a try; false when none is left. To be asked before the password is hashed.
  bool CountTry(const std::string& account, const std::string& address) {
    const std::lock_guard lock(mutex_);
    if (!accounts_.IsOneLeft(account) || !addresses_.IsOneLeft(address)) return false;
    accounts_.Count(account);
    addresses_.Count(address);
    return true;
  }
  /// The password was right.
  void UncountTry(const std::string& account, const std::string& address) {
    const std::lock_guard lock(mutex_);
    accounts_.Uncount(account);
    addresses_.Uncount(address);
  }
  /// Something else from the address was wrong. What it has used up comes back all the same: more than none
  /// left it never has.
  void CountWrong(const std::string& address) {
    const std::lock_guard lock(mutex_);
    if (addresses_.IsOneLeft(address)) addresses_.Count(address);
  }

 private:
  std::mutex mutex_;
  TryCounter accounts_, addresses_;
};

}  // namespace server
