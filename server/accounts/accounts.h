// Accounts: their numbers, their passwords, the tokens of programs that have logged in, and how often a wrong
// password may be tried.
#pragma once

#include <chrono>
#include <future>
#include <mutex>
#include <string>
#include <string_view>

#include "server/accounts/login_limit.h"
#include "server/accounts/try_counter.h"
#include "server/store/account_store.h"

namespace server {

/// What a request shows of who asks.
struct Caller {
  std::string address;   ///< of the network
  std::string token;     ///< "" for none
  std::string oldToken;  ///< of the account that is to be merged, "" for none
};

/// A login that was right.
struct LoggedIn {
  std::string account;
  std::string token;  ///< for the program to keep; "" when it has brought one of this account
};

/// May be used from several threads.
class Accounts {
 public:
  explicit Accounts(AccountStore& store, const SteadyClock& clock = std::chrono::steady_clock::now)
      : store_(store), limit_(1.0 / 3, clock), newcomers_(10, 1.0 / 3, clock) {}

  /// Cleans the number and makes sure that the account exists. Throws Refusal: kBadAccount, kNotFound.
  std::string Known(std::string_view number);

  /// Cleans the number and makes sure that the token is the account's. Throws Refusal: kBadAccount; kLogin,
  /// also for an account that does not exist. A wrong token counts as a wrong password of the address.
  std::string Proven(std::string_view number, const std::string& token, const std::string& address);
  /// The account of the caller's token. Throws Refusal: kLogin.
  std::string OwnerOf(const Caller& caller);

  /// As Known, and the password must be the account's. Throws also kWrongPassword, and kTryLater before
  /// anything is hashed when too many wrong ones came: for an account ten in a row are free, then one every
  /// three seconds; for an address thirty, then one every five. An unknown account counts as a wrong one.
  std::string Authenticate(std::string_view number, const std::string& password, const std::string& address);
  /// The same, and gives the program a token.
  LoggedIn LogIn(std::string_view number, const std::string& password, const Caller& caller);

  /// Sets the password of an account that has none yet, and says whether it did. Throws as Authenticate;
  /// kWrongPassword for a text that can be none (IsPassword).
  bool SetFirstPassword(std::string_view number, const std::string& password, const std::string& address);
  /// Makes an account with a fresh number. Throws Refusal: kWrongPassword for a text that can be none,
  /// kTryLater when too many accounts are wanted.
  LoggedIn Make(const std::string& password);
  /// Lets an account wait for its first password, unless it exists.
  void Await(const std::string& number);

  /// Makes sure that the account exists with this password, on a thread of its own: a hash takes longer than
  /// all the rest of a start. All others wait for it. To be called before them.
  void Ensure(const std::string& number, const std::string& password);

 private:
  struct Entry {
    std::string number, passwordHash;
  };
  std::string WellFormed(std::string_view number);
  Entry Find(std::string_view number);
  Entry Authentic(std::string_view number, const std::string& password, const std::string& address);
  std::optional<std::string> AccountOf(const std::string& token);
  std::string NewToken(const Entry& entry);

  AccountStore& store_;
  std::shared_future<void> ensured_;
  std::mutex firstPassword_;
  LoginLimit limit_;
  std::mutex newcomersMutex_;
  TryCounter newcomers_;
};

}  // namespace server
