#include <fmt/format.h>

#include <mutex>
#include <stdexcept>

#include "base/transaction.h"
#include "server/store/account_store.h"
#include "server/store/row_id.h"
#include "server/store/schema_steps.h"
#include "server/store/store_database.h"

namespace server {
namespace {

std::size_t SchemaVersion(base::Database& database) {
  return static_cast<std::size_t>(database.Number("PRAGMA user_version"));
}

void GiveIds(base::Database& database) {
  std::vector<std::vector<base::DbValue>> ids;
  database.Run(
      "SELECT id, account, sentence, day FROM sentence WHERE uid = ''", {}, [&](const base::DbRow& row) {
        ids.push_back({IdOfRow(row.Number(0), row.View(1), row.View(2), row.View(3)), row.Number(0)});
      });
  for (const auto& id : ids) database.Run("UPDATE sentence SET uid = ? WHERE id = ?", id);
}

void BringUpToDate(base::Database& database, const std::filesystem::path& file) {
  if (SchemaVersion(database) == kSchemaSteps.size()) return;
  base::Transaction transaction(database);
  const std::size_t version = SchemaVersion(database);
  if (version > kSchemaSteps.size()) {
    throw std::runtime_error(fmt::format("{} was made by a newer version", file.string()));
  }
  for (std::size_t step = version; step < kSchemaSteps.size(); ++step) {
    if (step == kStepOfRowIds) GiveIds(database);
    database.RunScript(kSchemaSteps[step]);
  }
  database.Run(fmt::format("PRAGMA user_version = {}", kSchemaSteps.size()));
  transaction.Commit();
}

class SqliteAccountStore : public AccountStore {
 public:
  explicit SqliteAccountStore(std::unique_ptr<base::Database> database) : database_(std::move(database)) {}

  std::optional<std::string> PasswordHash(const std::string& account) override {
    return First("SELECT password_hash FROM account WHERE number = ?", {account});
  }

  void PutAccount(const std::string& account, const std::string& passwordHash) override {
    const std::lock_guard lock(mutex_);
    base::Transaction transaction(*database_);
    database_->Run(
        "INSERT INTO account (number, password_hash) VALUES (?, ?)"
        " ON CONFLICT (number) DO UPDATE SET password_hash = excluded.password_hash",
        {account, passwordHash});
    database_->Run("DELETE FROM token WHERE account = ?", {account});
    transaction.Commit();
  }

  bool PutToken(const std::string& account, const std::string& passwordHash, const std::string& tokenHash,
                const std::string& day) override {
    const std::lock_guard lock(mutex_);
    base::Transaction transaction(*database_);
    database_->Run(
        "DELETE FROM token WHERE account = ? AND id NOT IN"
        " (SELECT id FROM token WHERE account = ? ORDER BY last_day DESC, id DESC LIMIT 49)",
        {account, account});
    const auto isPut = database_->Text(
        "INSERT INTO token (hash, account, made_day, last_day)"
        " SELECT ?, number, ?, ? FROM account WHERE number = ? AND password_hash = ? RETURNING 1",
        {tokenHash, day, day, account, passwordHash});
    if (isPut) transaction.Commit();
    return isPut.has_value();
  }

  std::optional<std::string> UseToken(const std::string& tokenHash, const std::string& day) override {
    const std::lock_guard lock(mutex_);
    std::vector<std::string> found;
    database_->Run("SELECT account, last_day FROM token WHERE hash = ?", {tokenHash},
                   [&](const base::DbRow& row) { found = row.Texts(); });
    if (found.empty()) return std::nullopt;
    if (found[1] != day) database_->Run("UPDATE token SET last_day = ? WHERE hash = ?", {day, tokenHash});
    return found[0];
  }

  std::vector<Token> Tokens(const std::string& account) override {
    const std::lock_guard lock(mutex_);
    std::vector<Token> tokens;
    database_->Run("SELECT made_day, last_day FROM token WHERE account = ? ORDER BY id", {account},
                   [&](const base::DbRow& row) {
                     tokens.push_back({row.Texts()[0], row.Texts()[1]});
                   });
    return tokens;
  }

  void ForgetTokens(const std::string& account) override {
    Write("DELETE FROM token WHERE account = ?", {account});
  }

  void PutOwner(const std::string& account, const std::string& userName, const std::string& email) override {
    Write("UPDATE account SET user_name = ?, email = ? WHERE number = ?", {userName, email, account});
  }

  void AddFeedback(const Feedback& feedback) override {
    Write("INSERT INTO feedback (day, account, errcode, sentence, remarks, email) VALUES (?, ?, ?, ?, ?, ?)",
          {feedback.day, feedback.account, feedback.errcode, feedback.sentence, feedback.remarks,
           feedback.email});
  }

  std::string UserSettings(const std::string& account) override {
    return First("SELECT settings FROM account WHERE number = ?", {account}).value_or("");
  }

  void PutUserSettings(const std::string& account, const std::string& settings) override {
    Write("UPDATE account SET settings = ? WHERE number = ?", {settings, account});
  }

  void CountAct(const std::string& account, const std::string& day, const std::string& act) override {
    Write(
        "INSERT INTO act (account, day, act, times) VALUES (?, ?, ?, 1)"
        " ON CONFLICT (account, day, act) DO UPDATE SET times = times + 1",
        {account, day, act});
  }

  void PutArchivedPage(const ArchiveKey& key, const std::string& page) override {
    Write("INSERT OR REPLACE INTO archive (pnomd5, checksum, page) VALUES (?, ?, ?)",
          {key.pnomd5, key.checksum, page});
  }

  std::optional<std::string> ArchivedPage(const ArchiveKey& key) override {
    return First("SELECT page FROM archive WHERE pnomd5 = ? AND checksum = ?", {key.pnomd5, key.checksum});
  }

 private:
  std::optional<std::string> First(const std::string& sql, const std::vector<base::DbValue>& parameters) {
    const std::lock_guard lock(mutex_);
    return database_->Text(sql, parameters);
  }

  void Write(const std::string& sql, const std::vector<base::DbValue>& parameters) {
    const std::lock_guard lock(mutex_);
    database_->Run(sql, parameters);
  }

  std::mutex mutex_;
  std::unique_ptr<base::Database> database_;
};

}  // namespace

std::unique_ptr<AccountStore> OpenAccountStore(const std::filesystem::path& file) try {
  auto database = OpenStoreDatabase(file);
  BringUpToDate(*database, file);
  return std::make_unique<SqliteAccountStore>(std::move(database));
} catch (const std::exception& error) {
  throw std::runtime_error(fmt::format("cannot use the database: {}", error.what()));
}

}  // namespace server
