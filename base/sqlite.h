// Databases on SQLite.
#pragma once

#include "base/database.h"

namespace base {

/// Opens files of SQLite 3. A database that is written uses the write-ahead log, so that a reader never waits
/// for the writer; a lock held by another process is waited for five seconds. A file that is damaged or no
/// database at all is an Error with SQLite's own text, at the latest at the first statement that meets
/// the damage. A database serves one thread at a time.
class SqliteDatabases : public Databases {
 public:
  std::unique_ptr<Database> Open(const std::filesystem::path& path, Mode mode) override;
  /// A file that exists already is an error: nothing is ever overwritten.
  std::unique_ptr<Database> Create(const std::filesystem::path& path) override;
};

}  // namespace base
