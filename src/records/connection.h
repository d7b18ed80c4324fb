// Connection strings.
#pragma once

#include <string>

namespace marovane {

/// Path of the database that a connection string names. Throws RunTimeError when it names none.
std::string ConnectionPath(const std::string& connectionString);

}  // namespace marovane
