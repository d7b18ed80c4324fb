#include "server/sqlite.h"

#include <stdexcept>

namespace marovane {
namespace {

constexpr int kBusyMilliseconds = 5000;

std::string ColumnText(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  if (text == nullptr) return "";
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

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
  Step(sql, parameters, [&](sqlite3_stmt* statement) {
    if (onRow) onRow(ColumnText(statement, 0));
  });
}

void Sqlite::RunRows(const std::string& sql, const std::vector<std::string>& parameters,
                     const std::function<void(const std::vector<std::string>&)>& onRow) {
  std::vector<std::string> row;
  Step(sql, parameters, [&](sqlite3_stmt* statement) {
    row.resize(static_cast<std::size_t>(sqlite3_column_count(statement)));
    for (std::size_t i = 0; i < row.size(); ++i) row[i] = ColumnText(statement, static_cast<int>(i));
    onRow(row);
  });
}

void Sqlite::Step(const std::string& sql, const std::vector<std::string>& parameters,
                  const std::function<void(sqlite3_stmt*)>& onRow) {
  sqlite3_stmt* statement = Prepared(sql);
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const std::string& text = parameters[i];
    sqlite3_bind_text(statement, static_cast<int>(i + 1), text.data(), static_cast<int>(text.size()),
                      SQLITE_TRANSIENT);
  }
  int result = sqlite3_step(statement);
  for (; result == SQLITE_ROW; result = sqlite3_step(statement)) onRow(statement);
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
