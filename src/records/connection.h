// Connection strings, and single values read through them.
#pragma once

#include <string>

struct Program;

/// Path of the database that a connection string names.
std::string ConnectionPath(const std::string& connectionString);

/// First field of the first row of a statement, "" when there is no row or the field is Null. Throws
/// RunTimeError.
std::string QueryFirstField(Program& program, const std::string& sql, const std::string& connectionString);
