// The databases of a test, and a look at them that knows nothing of the program's own statements.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "base/database.h"

namespace marovane {

/// Makes an empty record database by the schema that ships, its folder included.
/// @param version of the schema, as older programs had it; 0 for the present one
void CreateRecords(base::Databases& databases, const std::filesystem::path& path, std::size_t version = 0);
/// Makes an error-text database with these rows of `errmain` (code, outline) and one category.
void CreateErrList(base::Databases& databases, const std::filesystem::path& path,
                   const std::vector<std::pair<std::string, std::string>>& outlines);

/// Rows of a statement, each as its columns joined by "|"; Null as "NULL".
std::vector<std::string> Rows(base::Databases& databases, const std::filesystem::path& path,
                              const std::string& sql);

}  // namespace marovane
