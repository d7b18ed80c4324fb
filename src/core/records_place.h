// Where the records of the present learner are.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// Path of the database that a connection string names. Throws RunTimeError when it names none.
std::string ConnectionPath(const std::string& connectionString);

/// The folder of the record database, its outbox and its archive; "" at a campus before the login.
std::string RecordsFolder(const Program& program);

/// Pupils share computers: at a campus each account has a folder of its own.
std::string LearnerFolder(const Program& program, const std::string& account);
/// Points the connection to a database in this folder.
void UseRecordsIn(Program& program, const std::string& folder);

}  // namespace marovane
