// The database file behind the stores of the server.
#pragma once

#include <filesystem>
#include <memory>

#include "base/database.h"

namespace server {

/// A connection of its own, which makes the file when it is missing. Its statements keep to foreign keys.
/// Throws base::Error.
std::unique_ptr<base::Database> OpenStoreDatabase(const std::filesystem::path& file);

}  // namespace server
