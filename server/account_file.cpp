#include "server/account_file.h"

#include <fmt/format.h>

#include <stdexcept>

#include "protocol/account.h"
#include "server/key_values.h"
#include "server/random_text.h"

namespace marovane {
namespace {

constexpr std::size_t kNumberLength = 10;
constexpr std::size_t kPasswordLength = 12;

bool IsNone(const std::string& value) { return value.empty() || value == "0"; }

}  // namespace

AccountEntry EnsureAccountFile(const std::filesystem::path& file) {
  KeyValues values = KeyValues::Read(file);
  AccountEntry entry{protocol::CleanAccount(values.Get("Pno")), values.Get("userPW")};
  const bool complete = !IsNone(entry.number) && !IsNone(entry.password);
  if (IsNone(entry.number)) entry.number = RandomDigits(kNumberLength);
  if (IsNone(entry.password)) entry.password = RandomAlphanumeric(kPasswordLength);
  if (!protocol::IsAccountNumber(entry.number)) {
    throw std::runtime_error(fmt::format("{} names no account number in Pno", file.string()));
  }
  if (complete) return entry;
  values.Set("Pno", entry.number);
  values.Set("userPW", entry.password);
  values.Write(file);
  return entry;
}

}  // namespace marovane
