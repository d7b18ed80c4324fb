// Where things live on this platform.
#pragma once

#include <string>

namespace marovane {

struct Environment;

/// The read-only mirror of the account registry: `account.set` in the user's configuration folder, keys `Pno`
/// and `userPW`.
std::string AccountFile(const Environment& environment);
/// Folder for traces: `error.log`, and `debug.log` where the program's own folder cannot be written.
std::string TraceFolder(const Environment& environment);
/// Root of all working data: the variable TMP, else marovane/ in the user's data folder.
std::string WorkingRoot(const Environment& environment);

}  // namespace marovane
