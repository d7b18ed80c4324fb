#include "server/accounts.h"

#include <algorithm>

#include "server/form.h"
#include "server/password.h"
#include "server/text.h"

namespace marovane {
namespace {

constexpr double kFreeTries = 10;
constexpr double kTriesPerSecond = 1.0 / 3;
constexpr std::size_t kLongestNumber = 32;

bool IsNumberSign(char sign) {
  return (sign >= '0' && sign <= '9') || (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
         sign == '.' || sign == '_';
}

}  // namespace

std::string CleanAccount(std::string_view number) { return Replace(Replace(number, "-", ""), " ", ""); }

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
