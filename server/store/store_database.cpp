#include "server/store/store_database.h"

#include "base/sqlite.h"

namespace server {

std::unique_ptr<base::Database> OpenStoreDatabase(const std::filesystem::path& file) {
  auto database = base::SqliteDatabases().Open(file, base::Databases::Mode::kMayBeNew);
  database->Run("PRAGMA foreign_keys = ON");
  return database;
}

}  // namespace server
