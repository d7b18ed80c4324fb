#include <fmt/format.h>

#include <array>
#include <mutex>
#include <stdexcept>

#include "server/record_tables.h"
#include "server/school_tables.h"
#include "server/sqlite.h"
#include "server/store.h"

namespace marovane {
namespace {

/// Step N brings a database of version N to version N + 1. A step that was published is never changed.
constexpr std::array<const char*, 5> kSchemaSteps = {R"(
    CREATE TABLE account (
      number TEXT PRIMARY KEY,
      password_hash TEXT NOT NULL,
      settings TEXT NOT NULL DEFAULT ''
    );
    CREATE TABLE act (
      account TEXT NOT NULL REFERENCES account (number),
      day TEXT NOT NULL,
      act TEXT NOT NULL,
      times INTEGER NOT NULL,
      PRIMARY KEY (account, day, act)
    );
)",
                                                     R"(
    CREATE TABLE archive (
      pnomd5 TEXT NOT NULL,
      checksum TEXT NOT NULL,
      page TEXT NOT NULL,
      PRIMARY KEY (pnomd5, checksum)
    );
)",
                                                     R"(
    ALTER TABLE account ADD COLUMN user_name TEXT NOT NULL DEFAULT '';
    ALTER TABLE account ADD COLUMN email TEXT NOT NULL DEFAULT '';
    CREATE TABLE feedback (
      day TEXT NOT NULL,
      account TEXT NOT NULL,
      errcode TEXT NOT NULL,
      sentence TEXT NOT NULL,
      remarks TEXT NOT NULL,
      email TEXT NOT NULL
    );
)",
                                                     kRecordTables, kSchoolTables};

std::size_t SchemaVersion(Sqlite& database) {
  std::size_t version = 0;
  database.Run("PRAGMA user_version", {}, [&](const std::string& text) { version = std::stoul(text); });
  return version;
}

void BringUpToDate(Sqlite& database) {
  if (SchemaVersion(database) == kSchemaSteps.size()) return;
  database.RunScript("BEGIN IMMEDIATE");
  const std::size_t version = SchemaVersion(database);
  if (version > kSchemaSteps.size()) throw std::runtime_error("the database was made by a newer version");
  for (std::size_t step = version; step < kSchemaSteps.size(); ++step) database.RunScript(kSchemaSteps[step]);
  database.RunScript(fmt::format("PRAGMA user_version = {}; COMMIT", kSchemaSteps.size()));
}

class SqliteStore : public Store {
 public:
  explicit SqliteStore(const std::filesystem::path& file) : database_(file) { BringUpToDate(database_); }

  std::optional<std::string> PasswordHash(const std::string& account) override {
    return First("SELECT password_hash FROM account WHERE number = ?", {account});
  }

  void PutAccount(const std::string& account, const std::string& passwordHash) override {
    Write(
        "INSERT INTO account (number, password_hash) VALUES (?, ?)"
        " ON CONFLICT (number) DO UPDATE SET password_hash = excluded.password_hash",
        {account, passwordHash});
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
  std::optional<std::string> First(const std::string& sql, const std::vector<std::string>& parameters) {
    const std::lock_guard lock(mutex_);
    std::optional<std::string> first;
    database_.Run(sql, parameters, [&](std::string value) { first = std::move(value); });
    return first;
  }

  void Write(const std::string& sql, const std::vector<std::string>& parameters) {
    const std::lock_guard lock(mutex_);
    database_.Run(sql, parameters);
  }

  std::mutex mutex_;
  Sqlite database_;
};

}  // namespace

std::unique_ptr<Store> OpenSqliteStore(const std::filesystem::path& file) try {
  return std::make_unique<SqliteStore>(file);
} catch (const std::exception& error) {
  throw std::runtime_error(fmt::format("cannot use the database {}: {}", file.string(), error.what()));
}

}  // namespace marovane
