#include "server/accounts/accounts.h"

#include "base/day.h"
#include "base/sha256.h"
#include "protocol/account.h"
#include "protocol/refusal.h"
#include "server/accounts/password.h"
#include "server/services/random_text.h"

namespace server {

using protocol::Refusal;
namespace refusal = protocol::refusal;

namespace {

constexpr std::size_t kMadeNumber = 10;
constexpr std::size_t kTokenLength = 43;  // 256 bits

std::string HashToken(const std::string& token) {
  base::Sha256 hash;
  hash.Add(token);
  return hash.Digits();
}

std::string Day() { return base::IsoDay(base::Today()); }

}  // namespace

std::string Accounts::WellFormed(std::string_view number) {
  std::string account = protocol::CleanAccount(number);
  if (!protocol::IsAccountNumber(account)) throw Refusal(refusal::kBadAccount);
  if (ensured_.valid()) ensured_.get();
  return account;
}

Accounts::Entry Accounts::Find(std::string_view number) {
  std::string account = WellFormed(number);
  auto hash = store_.PasswordHash(account);
  if (!hash) throw Refusal(refusal::kNotFound);
  return {std::move(account), std::move(*hash)};
}

std::string Accounts::Known(std::string_view number) { return Find(number).number; }

std::string Accounts::Proven(std::string_view number, const std::string& token, const std::string& address) {
  std::string account = WellFormed(number);
  if (AccountOf(token) == account) return account;
  if (!token.empty()) limit_.CountWrong(address);
  throw Refusal(refusal::kLogin);
}

std::string Accounts::OwnerOf(const Caller& caller) {
  auto account = AccountOf(caller.token);
  if (account) return std::move(*account);
  if (!caller.token.empty()) limit_.CountWrong(caller.address);
  throw Refusal(refusal::kLogin);
}

std::optional<std::string> Accounts::AccountOf(const std::string& token) {
  if (ensured_.valid()) ensured_.get();
  if (token.empty()) return std::nullopt;
  return store_.UseToken(HashToken(token), Day());
}

Accounts::Entry Accounts::Authentic(std::string_view number, const std::string& password,
                                    const std::string& address) {
  const std::string account = WellFormed(number);
  if (password.empty()) throw Refusal(refusal::kWrongPassword);
  if (!limit_.CountTry(account, address)) throw Refusal(refusal::kTryLater);
  Entry entry = Find(account);
  if (!PasswordFits(password, entry.passwordHash)) throw Refusal(refusal::kWrongPassword);
  limit_.UncountTry(account, address);
  return entry;
}

std::string Accounts::Authenticate(std::string_view number, const std::string& password,
                                   const std::string& address) {
  return Authentic(number, password, address).number;
}

LoggedIn Accounts::LogIn(std::string_view number, const std::string& password, const Caller& caller) {
  const Entry entry = Authentic(number, password, caller.address);
  const bool hasToken = AccountOf(caller.token) == entry.number;
  return {entry.number, hasToken ? "" : NewToken(entry)};
}

// The password may have been changed since it was found right.
std::string Accounts::NewToken(const Entry& entry) {
  std::string token = RandomAlphanumeric(kTokenLength);
  if (!store_.PutToken(entry.number, entry.passwordHash, HashToken(token), Day())) {
    throw Refusal(refusal::kWrongPassword);
  }
  return token;
}

bool Accounts::SetFirstPassword(std::string_view number, const std::string& password,
                                const std::string& address) {
  const std::string account = WellFormed(number);
  if (!limit_.CountTry(account, address)) throw Refusal(refusal::kTryLater);
  const std::lock_guard lock(firstPassword_);  // of two first logins only one sets it
  const Entry entry = Find(account);
  limit_.UncountTry(account, address);
  if (!entry.passwordHash.empty()) return false;
  if (!protocol::IsPassword(password)) throw Refusal(refusal::kWrongPassword);
  store_.PutAccount(account, HashPassword(password));
  return true;
}

LoggedIn Accounts::Make(const std::string& password) {
  if (!protocol::IsPassword(password)) throw Refusal(refusal::kWrongPassword);
  {
    const std::lock_guard lock(newcomersMutex_);
    if (!newcomers_.IsOneLeft("")) throw Refusal(refusal::kTryLater);
    newcomers_.Count("");
  }
  Entry entry{"", HashPassword(password)};
  do {
    entry.number = RandomDigits(kMadeNumber);
  } while (store_.PasswordHash(entry.number));
  store_.PutAccount(entry.number, entry.passwordHash);
  return {entry.number, NewToken(entry)};
}

void Accounts::Await(const std::string& number) {
  if (!protocol::IsAccountNumber(number) || store_.PasswordHash(number)) return;
  store_.PutAccount(number, "");
}

void Accounts::Ensure(const std::string& number, const std::string& password) {
  ensured_ = std::async(std::launch::async, [=, &store = store_] {
    const auto hash = store.PasswordHash(number);
    if (!hash || !PasswordFits(password, *hash)) store.PutAccount(number, HashPassword(password));
  });
}

}  // namespace server
