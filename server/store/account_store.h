// Accounts with their settings, tokens and counts, feedback, and the archive of result pages. One small
// interface, so that another database can be used.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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

/// A program that has logged in. Days are ISO text.
struct Token {
  std::string madeDay;
  std::string lastDay;  ///< of its last use
};

/// Texts are UTF-8; an account is its cleaned number. All calls may come from several threads, and throw
/// std::runtime_error when the database fails.
class AccountStore {
 public:
  virtual ~AccountStore() = default;

  /// Nothing for an unknown account.
  virtual std::optional<std::string> PasswordHash(const std::string& account) = 0;
  /// Makes the account or changes its password. Its tokens are forgotten; its other data stays.
  virtual void PutAccount(const std::string& account, const std::string& passwordHash) = 0;

  /// Has a token, known by its hash, stand for the account. Of fifty the one that was not used for the
  /// longest time makes room. False, and nothing has changed, when the account has another password hash by
  /// now.
  virtual bool PutToken(const std::string& account, const std::string& passwordHash,
                        const std::string& tokenHash, const std::string& day) = 0;
  /// The account of a token, nothing for an unknown one. Notes the day as that of its last use.
  virtual std::optional<std::string> UseToken(const std::string& tokenHash, const std::string& day) = 0;
  /// The tokens of an account, oldest first.
  virtual std::vector<Token> Tokens(const std::string& account) = 0;
  virtual void ForgetTokens(const std::string& account) = 0;

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
