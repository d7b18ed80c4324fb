// Who has logged in: sessions in memory, and the tokens that prove that a form came from our own page.
#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "server/accounts/try_counter.h"

namespace server {

/// A session ends an hour after its last use, and twelve hours after the login at the latest. At most a
/// thousand are kept: then the one that was not used for the longest time ends. May be used from several
/// threads.
class Sessions {
 public:
  explicit Sessions(SteadyClock clock) : clock_(std::move(clock)) {}

  /// What a session belongs to. With another password hash than today's it is none any more.
  struct Owner {
    std::string login;
    std::string passwordHash;
  };

  /// Always a fresh secret, whatever the browser had before: "" is never one.
  std::string Open(const Owner& owner);
  /// Counts as a use.
  std::optional<Owner> Find(const std::string& secret);
  void Close(const std::string& secret);

  /// The token for the forms of a page that goes to a browser with this secret in its cookie: a keyed hash
  /// (BLAKE2b), so that nothing needs to be kept for those who have not logged in.
  std::string FormToken(std::string_view secret) const;
  bool IsFormToken(std::string_view secret, std::string_view token) const;

 private:
  struct Session {
    Owner owner;
    std::chrono::steady_clock::time_point opened;
    std::chrono::steady_clock::time_point used;
  };
  bool IsOver(const Session& session) const;

  SteadyClock clock_;
  const std::string key_ = NewKey();
  static std::string NewKey();
  mutable std::mutex mutex_;
  std::unordered_map<std::string, Session> sessions_;
};

}  // namespace server
