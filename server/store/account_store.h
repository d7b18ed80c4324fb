// Accounts with their settings and counts, feedback, and the archive of result pages. One small interface, so
// that another database can be used.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace server {

/// Names an archived page: digests of an account number and of a sentence.
struct ArchiveKey {
  std::string pnomd5;
  std::string checksum;
};

/// What a learner says about a verdict.
struct Feedback {
  std::string day;  ///< ISO text
  std::string account;
  std::string errcode;
  std::string sentence;
  std::string remarks;
  std::string email;  ///< "" when no answer is wanted
};

/// Texts are UTF-8; an account is its cleaned number. All calls may come from several threads, and throw
/// std::runtime_error when the database fails.
class AccountStore {
 public:
  virtual ~AccountStore() = default;

  /// Nothing for an unknown account.
  virtual std::optional<std::string> PasswordHash(const std::string& account) = 0;
  /// Makes the account or changes its password; its other data stays.
  virtual void PutAccount(const std::string& account, const std::string& passwordHash) = 0;

  /// Notes whose account it is. Unknown accounts keep nothing.
  virtual void PutOwner(const std::string& account, const std::string& userName,
                        const std::string& email) = 0;
  virtual void AddFeedback(const Feedback& feedback) = 0;

  /// The settings list as it was put, "" before that. Unknown accounts have none and keep none.
  virtual std::string UserSettings(const std::string& account) = 0;
  virtual void PutUserSettings(const std::string& account, const std::string& settings) = 0;

  /// Counts one use of a part of the program. `day` is ISO text, "2026-11-05".
  virtual void CountAct(const std::string& account, const std::string& day, const std::string& act) = 0;

  /// A page of an archive, by digests; a second one of the same takes its place. Nothing for an unknown one.
  virtual void PutArchivedPage(const ArchiveKey& key, const std::string& page) = 0;
  virtual std::optional<std::string> ArchivedPage(const ArchiveKey& key) = 0;
};

/// Opens the SQLite database of a file, and creates it or brings its tables up to date first. Throws
/// std::runtime_error when the file cannot be used.
std::unique_ptr<AccountStore> OpenAccountStore(const std::filesystem::path& file);

}  // namespace server
