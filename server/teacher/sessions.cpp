#include "server/teacher/sessions.h"

#include <sodium.h>

#include <algorithm>
#include <stdexcept>

#include "base/sha256.h"
#include "server/services/random_text.h"

namespace server {
namespace {

constexpr std::chrono::hours kIdle{1};
constexpr std::chrono::hours kLongest{12};
constexpr std::size_t kMost = 1000;
constexpr std::size_t kSecretBytes = 32;
constexpr std::size_t kTokenBytes = 32;

}  // namespace

std::string Sessions::NewKey() {
  std::string key(crypto_generichash_KEYBYTES, '\0');
  if (sodium_init() < 0) throw std::runtime_error("the system gives no random numbers");
  randombytes_buf(key.data(), key.size());
  return key;
}

std::string Sessions::Open(const Owner& owner) {
  std::string secret = RandomHex(kSecretBytes);
  const std::lock_guard lock(mutex_);
  std::erase_if(sessions_, [this](const auto& each) { return IsOver(each.second); });
  if (sessions_.size() >= kMost) {
    sessions_.erase(
        std::ranges::min_element(sessions_, {}, [](const auto& each) { return each.second.used; }));
  }
  sessions_.emplace(secret, Session{owner, clock_(), clock_()});
  return secret;
}

std::optional<Sessions::Owner> Sessions::Find(const std::string& secret) {
  const std::lock_guard lock(mutex_);
  const auto session = sessions_.find(secret);
  if (session == sessions_.end()) return std::nullopt;
  if (IsOver(session->second)) {
    sessions_.erase(session);
    return std::nullopt;
  }
  session->second.used = clock_();
  return session->second.owner;
}

void Sessions::Close(const std::string& secret) {
  const std::lock_guard lock(mutex_);
  sessions_.erase(secret);
}

bool Sessions::IsOver(const Session& session) const {
  const auto now = clock_();
  return now - session.used > kIdle || now - session.opened > kLongest;
}

std::string Sessions::FormToken(std::string_view secret) const {
  std::string hash(kTokenBytes, '\0');
  crypto_generichash(reinterpret_cast<unsigned char*>(hash.data()), hash.size(),
                     reinterpret_cast<const unsigned char*>(secret.data()), secret.size(),
                     reinterpret_cast<const unsigned char*>(key_.data()), key_.size());
  return base::HexOf(hash);
}

bool Sessions::IsFormToken(std::string_view secret, std::string_view token) const {
  const std::string right = FormToken(secret);
  return !secret.empty() && token.size() == right.size() &&
         sodium_memcmp(token.data(), right.data(), right.size()) == 0;
}

}  // namespace server
