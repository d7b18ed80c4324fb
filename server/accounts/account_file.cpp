#include "server/accounts/account_file.h"

#include <fmt/format.h>

#include <stdexcept>

#include "base/key_values.h"
#include "base/posix_files.h"
#include "protocol/account.h"
#include "server/services/random_text.h"

namespace server {
namespace {

constexpr std::size_t kNumberLength = 10;
constexpr std::size_t kPasswordLength = 12;

bool IsNone(const std::string& value) { return value.empty() || value == "0"; }

}  // namespace

AccountEntry EnsureAccountFile(const std::filesystem::path& file) {
  base::PosixFiles files;
  base::KeyValues values = base::KeyValues::Read(files, file);
  AccountEntry entry{protocol::CleanAccount(values.Find("Pno").value_or("")),
                     values.Find("userPW").value_or("")};
  const bool complete = !IsNone(entry.number) && !IsNone(entry.password);
  if (IsNone(entry.number)) entry.number = RandomDigits(kNumberLength);
  if (IsNone(entry.password)) entry.password = RandomAlphanumeric(kPasswordLength);
  if (!protocol::IsAccountNumber(entry.number)) {
    throw std::runtime_error(fmt::format("{} names no account number in Pno", file.string()));
  }
  if (complete) return entry;
  values.Set("Pno", entry.number);
  values.Set("userPW", entry.password);
  files.CreateFolder(file.parent_path(), true);
  base::RewriteFile(files, file, values.Bytes(), true);
  return entry;
}

}  // namespace server
