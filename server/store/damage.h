// A database of the server that is damaged.
#pragma once

#include <filesystem>

namespace server {

/// When the file is there and SQLite finds it damaged, renames it, with the files that belong to it, so that
/// a new database can take its place. A database of a newer version is not damaged.
/// @return where it is now; empty when nothing was wrong
/// Throws std::runtime_error when it cannot be opened or renamed.
std::filesystem::path SetDamagedAside(const std::filesystem::path& file);

}  // namespace server
