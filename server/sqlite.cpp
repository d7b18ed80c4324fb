#include "server/sqlite.h"

#include <stdexcept>

namespace marovane {
namespace {

constexpr int kBusyMilliseconds = 5000;

}  // namespace

Sqlite::Sqlite(const std::filesystem::path& file) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open(file.c_str(), &opened);
  connection_.reset(opened);
  if (result != SQLITE_OK) Fail();
  sqlite3_busy_timeout(opened, kBusyMilliseconds);
  RunScript("PRAGMA journal_mode = WAL; PRAGMA foreign_keys = ON;");
}

void Sqlite::Run(const std::string& sql, const std::vector<std::string>& parameters,
                 const std::function<void(std::string)>& onRow) {
  sqlite3_stmt* statement = Prepared(sql);
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const std::string& text = parameters[i];
    sqlite3_bind_text(statement, static_cast<int>(i + 1), text.data(), static_cast<int>(text.size()),
                      SQLITE_TRANSIENT);
  }
  int result = sqlite3_step(statement);
  for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    if (onRow) onRow(text == nullptr ? "" : text);
  }
  sqlite3_reset(statement);
  if (result != SQLITE_DONE) Fail();
}

void Sqlite::RunScript(const std::string& sql) {
  if (sqlite3_exec(connection_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
}

sqlite3_stmt* Sqlite::Prepared(const std::string& sql) {
  if (const auto known = statements_.find(sql); known != statements_.end()) return known->second.get();
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(connection_.get(), sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) Fail();
  return statements_.emplace(sql, Statement(statement, &sqlite3_finalize)).first->second.get();
}

void Sqlite::Fail() const { throw std::runtime_error(sqlite3_errmsg(connection_.get())); }

}  // namespace marovane
