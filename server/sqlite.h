// SQLite as the server's stores use it.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace marovane {

/// One connection with its prepared statements. Not for several threads at once.
class Sqlite {
 public:
  explicit Sqlite(const std::filesystem::path& file);

  /// Runs one statement with its parameters bound in order, and hands over the first column of each row.
  void Run(const std::string& sql, const std::vector<std::string>& parameters = {},
           const std::function<void(std::string)>& onRow = {});
  /// The same with all columns of each row.
  void RunRows(const std::string& sql, const std::vector<std::string>& parameters,
               const std::function<void(const std::vector<std::string>&)>& onRow);
  /// Runs several statements without parameters.
  void RunScript(const std::string& sql);

 private:
  using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
  sqlite3_stmt* Prepared(const std::string& sql);
  void Step(const std::string& sql, const std::vector<std::string>& parameters,
            const std::function<void(sqlite3_stmt*)>& onRow);
  [[noreturn]] void Fail() const;

  std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection_{nullptr, &sqlite3_close};
  std::unordered_map<std::string, Statement> statements_;
};

}  // namespace marovane
