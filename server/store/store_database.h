// The database file of all stores of the server.
#pragma once

#include <filesystem>
#include <memory>

#include "base/sqlite.h"

namespace server {

/// A connection of its own, which makes the file when it is missing. Its statements keep to foreign keys.
/// Throws base::Error.
inline std::unique_ptr<base::Database> OpenStoreDatabase(const std::filesystem::path& file) {
  auto database = base::SqliteDatabases().Open(file, base::Databases::Mode::kMayBeNew);
  database->Run("PRAGMA foreign_keys = ON");
  return database;
}

}  // namespace server
