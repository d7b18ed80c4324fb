// Databases, without the words of any one of them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/error.h"

namespace base {

/// A file that is damaged, or no database at all.
class DamagedDatabase : public Error {
 public:
  using Error::Error;
};

/// A value of a column or parameter: Null, a number, or UTF-8 text.
using DbValue = std::variant<std::monostate, std::int64_t, std::string>;

/// One row of a result. Columns count from 0.
class DbRow {
 public:
  virtual ~DbRow() = default;
  virtual int Count() const = 0;
  virtual bool IsNull(int column) const = 0;
  virtual std::int64_t Number(int column) const = 0;
  /// The text, valid until the row has been handed over; "" for Null.
  virtual std::string_view View(int column) const = 0;
  /// A copy of it.
  std::string Text(int column) const { return std::string(View(column)); }
  std::vector<std::string> Texts() const;  ///< of all columns
};

class Database {
 public:
  virtual ~Database() = default;
  /// Runs one statement with its parameters bound in order, and hands each row over. Statements are prepared
  /// once and kept. Throws Error.
  virtual void Run(std::string_view sql, const std::vector<DbValue>& parameters = {},
                   const std::function<void(const DbRow&)>& onRow = {}) = 0;
  /// The first column of all rows.
  std::vector<std::string> Column(std::string_view sql, const std::vector<DbValue>& parameters = {});
  /// The first column of the first row; nothing without rows.
  std::optional<std::string> Text(std::string_view sql, const std::vector<DbValue>& parameters = {});
  /// The same as a number; 0 without rows.
  int Number(std::string_view sql, const std::vector<DbValue>& parameters = {});
  /// Runs a script of several statements without parameters.
  virtual void RunScript(const std::string& script) = 0;
};

class Databases {
 public:
  virtual ~Databases() = default;
  enum class Mode { kReadOnly, kReadWrite, kMayBeNew };
  /// Opens a database, which must exist unless it may be new. Throws Error when the file is missing or cannot
  /// be opened.
  virtual std::unique_ptr<Database> Open(const std::filesystem::path& path, Mode mode) = 0;
  /// Makes a new, empty one.
  virtual std::unique_ptr<Database> Create(const std::filesystem::path& path) = 0;
};

}  // namespace base
