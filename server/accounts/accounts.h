// Accounts: their numbers, their passwords, and how often a wrong one may be tried.
#pragma once

#include <chrono>
#include <future>
#include <mutex>
#include <string>
#include <string_view>

#include "server/accounts/try_counter.h"
#include "server/store/account_store.h"

namespace server {

/// May be used from several threads.
class Accounts {
 public:
  explicit Accounts(AccountStore& store, SteadyClock clock = std::chrono::steady_clock::now)
      : store_(store), tries_(10, 1.0 / 3, std::move(clock)) {}

  /// Cleans the number and makes sure that the account exists. Throws Refusal: kBadAccount, kNotFound.
  std::string Known(std::string_view number);

  /// As Known, and the password must be the account's. Throws also kWrongPassword, and kTryLater when
  /// too many wrong ones came: ten in a row are free, then one every three seconds; ten thousand accounts are
  /// remembered (TryCounter).
  std::string Authenticate(std::string_view number, const std::string& password);

  /// Sets the password of an account that has none yet, and says whether it did. Throws as Known, and
  /// kWrongPassword for an empty one.
  bool SetFirstPassword(std::string_view number, const std::string& password);
  /// Makes an account with a fresh number and returns the number. Throws Refusal: kWrongPassword for one
  /// below four characters, kTryLater when too many accounts are wanted.
  std::string Make(const std::string& password);
  /// Lets an account wait for its first password, unless it exists.
  void Await(const std::string& number);

  /// Makes sure that the account exists with this password, on a thread of its own: a hash takes longer than
  /// all the rest of a start. Known and Authenticate wait for it. To be called before them.
  void Ensure(const std::string& number, const std::string& password);

 private:
  void CountTry(const std::string& account);
  void UncountTry(const std::string& account);

  AccountStore& store_;
  std::shared_future<void> ensured_;
  std::mutex mutex_;
  std::mutex firstPassword_;
  TryCounter tries_;
};

}  // namespace server
