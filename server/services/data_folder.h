// The folder of the server's data.
#pragma once

#include <filesystem>

namespace server {

/// Makes the folder when it is missing, for its owner alone, and returns it. Throws std::runtime_error.
std::filesystem::path MadeDataFolder(const std::filesystem::path& folder);

/// A school whose folder has no database yet is new: its owner's settings get `requireToken=1`, unless they
/// have the key already. Called before the database is made, so that a kill in between leaves no school
/// without it. Throws std::runtime_error.
void ProtectNewSchool(const std::filesystem::path& folder);

}  // namespace server
