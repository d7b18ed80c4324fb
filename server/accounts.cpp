#include "server/accounts.h"

#include <algorithm>

#include "base/text.h"
#include "server/form.h"
#include "server/password.h"
#include "server/random_text.h"

namespace marovane {
namespace {

constexpr double kFreeTries = 10;
constexpr double kTriesPerSecond = 1.0 / 3;
constexpr std::size_t kLongestNumber = 32;
constexpr std::size_t kMadeNumber = 10;
constexpr std::size_t kShortestPassword = 4;

bool IsNumberSign(char sign) {
  return (sign >= '0' && sign <= '9') || (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
         sign == '.' || sign == '_';
}

}  // namespace

std::string CleanAccount(std::string_view number) {
  return base::Replace(base::Replace(number, "-", ""), " ", "");
}

bool IsAccountNumber(std::string_view number) {
  return !number.empty() && number.size() <= kLongestNumber &&
         std::all_of(number.begin(), number.end(), IsNumberSign);
}

std::string Accounts::Known(std::string_view number) {
  std::string account = CleanAccount(number);
  if (!IsAccountNumber(account)) throw Refusal("ERR_INVAILD_ACCOUNT");
  if (ensured_.valid()) ensured_.get();
  if (!store_.PasswordHash(account)) throw Refusal("ERR_NOTFOUND");
  return account;
}

std::string Accounts::Proven(std::string_view number, const std::string& password) {
  std::string account = Known(number);
  if (password.empty()) throw Refusal("ERR_WRONG_PASSWORD");
  TakeTry(account);
  if (!PasswordFits(password, store_.PasswordHash(account).value_or(""))) throw Refusal("ERR_WRONG_PASSWORD");
  GiveTryBack(account);
  return account;
}

bool Accounts::TakesFirstPassword(std::string_view number, const std::string& password) {
  const std::string account = Known(number);
  const std::lock_guard lock(firstPassword_);  // of two first logins only one sets it
  if (!store_.PasswordHash(account).value_or("").empty()) return false;
  if (password.empty()) throw Refusal("ERR_WRONG_PASSWORD");
  store_.PutAccount(account, HashPassword(password));
  return true;
}

std::string Accounts::Make(const std::string& password) {
  if (password.size() < kShortestPassword) throw Refusal("ERR_WRONG_PASSWORD");
  TakeTry("");  // no account's number: the tries of all newcomers
  std::string number;
  do {
    number = RandomDigits(kMadeNumber);
  } while (store_.PasswordHash(number));
  store_.PutAccount(number, HashPassword(password));
  return number;
}

void Accounts::Await(const std::string& number) {
  if (!IsAccountNumber(number) || store_.PasswordHash(number)) return;
  store_.PutAccount(number, "");
}

void Accounts::Ensure(const std::string& number, const std::string& password) {
  ensured_ = std::async(std::launch::async, [=, &store = store_] {
    const auto hash = store.PasswordHash(number);
    if (!hash || !PasswordFits(password, *hash)) store.PutAccount(number, HashPassword(password));
  });
}

void Accounts::TakeTry(const std::string& account) {
  const std::lock_guard lock(mutex_);
  const auto now = clock_();
  Tries& tries = tries_.try_emplace(account, Tries{kFreeTries, now}).first->second;
  const std::chrono::duration<double> seconds = now - tries.at;
  tries = {std::min(kFreeTries, tries.left + seconds.count() * kTriesPerSecond), now};
  if (tries.left < 1) throw Refusal("ERR_TRY_LATER");
  tries.left -= 1;
}

void Accounts::GiveTryBack(const std::string& account) {
  const std::lock_guard lock(mutex_);
  tries_[account].left += 1;
}

}  // namespace marovane
