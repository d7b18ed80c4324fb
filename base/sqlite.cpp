#include "base/sqlite.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <map>
#include <utility>

namespace base {
namespace {

constexpr int kBusyTimeout = 5000;  // milliseconds

struct CloseStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
struct CloseConnection {
  void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

[[noreturn]] void FailWith(int code, const std::string& text) {
  if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB) throw DamagedDatabase(text);
  throw Error(text);
}

struct Statement {
  std::unique_ptr<sqlite3_stmt, CloseStatement> handle;
  bool isRunning = false;
};

// Marks a statement as running and leaves it fit for the next run, whatever happened in this one.
class Running {
 public:
  explicit Running(Statement& statement) : statement_(statement) { statement_.isRunning = true; }
  ~Running() {
    sqlite3_reset(statement_.handle.get());
    sqlite3_clear_bindings(statement_.handle.get());
    statement_.isRunning = false;
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  Statement& statement_;
};

class SqliteRow : public DbRow {
 public:
  explicit SqliteRow(sqlite3_stmt* statement) : statement_(statement) {}

  int Count() const override { return sqlite3_data_count(statement_); }
  bool IsNull(int column) const override {
    return sqlite3_column_type(statement_, Checked(column)) == SQLITE_NULL;
  }
  std::int64_t Number(int column) const override { return sqlite3_column_int64(statement_, Checked(column)); }
  std::string_view View(int column) const override {
    const unsigned char* const bytes = sqlite3_column_text(statement_, Checked(column));
    if (bytes == nullptr) return {};
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    return {reinterpret_cast<const char*>(bytes), size};
  }

 private:
  int Checked(int column) const {
    if (column >= 0 && column < Count()) return column;
    throw Error(fmt::format("the row has no column {}", column));
  }

  sqlite3_stmt* statement_;
};

class SqliteDatabase : public Database {
 public:
  explicit SqliteDatabase(Connection connection) : connection_(std::move(connection)) {}

  void Run(std::string_view sql, const std::vector<DbValue>& parameters,
           const std::function<void(const DbRow&)>& onRow) override {
    Statement& statement = FreeStatement(sql);
    sqlite3_stmt* const handle = statement.handle.get();
    const Running running(statement);
    Bind(handle, parameters);
    while (true) {
      const int result = sqlite3_step(handle);
      if (result == SQLITE_DONE) return;
      if (result != SQLITE_ROW) Fail();
      if (onRow) onRow(SqliteRow(handle));
    }
  }

  void RunScript(const std::string& script) override {
    if (sqlite3_exec(connection_.get(), script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) Fail();
  }

 private:
  [[noreturn]] void Fail() const {
    FailWith(sqlite3_errcode(connection_.get()), sqlite3_errmsg(connection_.get()));
  }

  // Whoever is handed the rows of a statement may run the same statement again, which needs another instance.
  Statement& FreeStatement(std::string_view sql) {
    auto found = statements_.find(sql);
    if (found == statements_.end()) found = statements_.try_emplace(std::string(sql)).first;
    auto& instances = found->second;
    const auto idle = std::ranges::find(instances, false, [](const auto& one) { return one->isRunning; });
    if (idle != instances.end()) return **idle;
    instances.push_back(Prepare(sql));
    return *instances.back();
  }

  std::unique_ptr<Statement> Prepare(std::string_view sql) const {
    sqlite3_stmt* handle = nullptr;
    const char* rest = nullptr;
    const int result = sqlite3_prepare_v3(connection_.get(), sql.data(), static_cast<int>(sql.size()),
                                          SQLITE_PREPARE_PERSISTENT, &handle, &rest);
    auto statement = std::make_unique<Statement>();
    statement->handle.reset(handle);
    if (result != SQLITE_OK) Fail();
    const std::string_view after = sql.substr(static_cast<std::size_t>(rest - sql.data()));
    if (handle == nullptr || after.find_first_not_of(" \t\r\n;") != std::string_view::npos) {
      throw Error(fmt::format("not one single statement: {}", sql));
    }
    return statement;
  }

  void Bind(sqlite3_stmt* handle, const std::vector<DbValue>& parameters) const {
    const int wanted = sqlite3_bind_parameter_count(handle);
    if (std::cmp_not_equal(wanted, parameters.size())) {
      throw Error(fmt::format("{} parameters for a statement that takes {}: {}", parameters.size(), wanted,
                              sqlite3_sql(handle)));
    }
    for (int i = 0; i < wanted; ++i) {
      if (BindOne(handle, i + 1, parameters[static_cast<std::size_t>(i)]) != SQLITE_OK) Fail();
    }
  }

  static int BindOne(sqlite3_stmt* handle, int index, const DbValue& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
      return sqlite3_bind_int64(handle, index, *number);
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
      return sqlite3_bind_text64(handle, index, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    return sqlite3_bind_null(handle, index);
  }

  Connection connection_;
  std::map<std::string, std::vector<std::unique_ptr<Statement>>, std::less<>> statements_;
};

std::unique_ptr<Database> Connect(const std::filesystem::path& path, int flags) {
  sqlite3* raw = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  Connection connection(raw);
  if (result != SQLITE_OK) {
    throw Error(fmt::format("{}: {}", path.string(), raw != nullptr ? sqlite3_errmsg(raw) : "no memory"));
  }
  sqlite3_busy_timeout(raw, kBusyTimeout);
  auto database = std::make_unique<SqliteDatabase>(std::move(connection));
  try {
    // Both read the file's head, so that something that is no database is found out here.
    database->RunScript((flags & SQLITE_OPEN_READONLY) != 0 ? "PRAGMA schema_version"
                                                            : "PRAGMA journal_mode=WAL");
  } catch (const Error& error) {
    FailWith(sqlite3_errcode(raw), fmt::format("{}: {}", path.string(), error.what()));
  }
  return database;
}

}  // namespace

std::unique_ptr<Database> SqliteDatabases::Open(const std::filesystem::path& path, Mode mode) {
  if (mode == Mode::kMayBeNew) return Connect(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  return Connect(path, mode == Mode::kReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
}

std::unique_ptr<Database> SqliteDatabases::Create(const std::filesystem::path& path) {
  if (std::filesystem::exists(path)) throw Error(fmt::format("{}: exists already", path.string()));
  return Open(path, Mode::kMayBeNew);
}

}  // namespace base
