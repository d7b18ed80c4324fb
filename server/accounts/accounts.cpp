#include "server/accounts/accounts.h"

#include "protocol/account.h"
#include "protocol/refusal.h"
#include "server/accounts/password.h"
#include "server/services/random_text.h"

namespace server {

using protocol::Refusal;
namespace refusal = protocol::refusal;

namespace {

constexpr std::size_t kMadeNumber = 10;
constexpr std::size_t kShortestPassword = 4;

}  // namespace

std::string Accounts::Known(std::string_view number) {
  std::string account = protocol::CleanAccount(number);
  if (!protocol::IsAccountNumber(account)) throw Refusal(refusal::kBadAccount);
  if (ensured_.valid()) ensured_.get();
  if (!store_.PasswordHash(account)) throw Refusal(refusal::kNotFound);
  return account;
}

std::string Accounts::Authenticate(std::string_view number, const std::string& password) {
  std::string account = Known(number);
  if (password.empty()) throw Refusal(refusal::kWrongPassword);
  CountTry(account);
  if (!PasswordFits(password, store_.PasswordHash(account).value_or("")))
    throw Refusal(refusal::kWrongPassword);
  UncountTry(account);
  return account;
}

bool Accounts::SetFirstPassword(std::string_view number, const std::string& password) {
  const std::string account = Known(number);
  const std::lock_guard lock(firstPassword_);  // of two first logins only one sets it
  if (!store_.PasswordHash(account).value_or("").empty()) return false;
  if (password.empty()) throw Refusal(refusal::kWrongPassword);
  store_.PutAccount(account, HashPassword(password));
  return true;
}

std::string Accounts::Make(const std::string& password) {
  if (password.size() < kShortestPassword) throw Refusal(refusal::kWrongPassword);
  CountTry("");  // no account's number: the tries of all newcomers
  std::string number;
  do {
    number = RandomDigits(kMadeNumber);
  } while (store_.PasswordHash(number));
  store_.PutAccount(number, HashPassword(password));
  return number;
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

void Accounts::CountTry(const std::string& account) {
  const std::lock_guard lock(mutex_);
  if (!tries_.IsOneLeft(account)) throw Refusal(refusal::kTryLater);
  tries_.Count(account);
}

void Accounts::UncountTry(const std::string& account) {
  const std::lock_guard lock(mutex_);
  tries_.Uncount(account);
}

}  // namespace server
