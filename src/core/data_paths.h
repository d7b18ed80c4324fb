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
/// Root of all working data, without a slash at its end: the variable MAROVANE_HOME; else TMP, unless it
/// leads into a folder that the system empties; else DataFolder. Throws RunTimeError when MAROVANE_HOME is no
/// absolute path.
std::string WorkingRoot(const Environment& environment);
/// marovane/ in the user's data folder.
std::string DataFolder(const Environment& environment);
/// The folder, without links, to which TMP leads when it does not count because the system empties it: older
/// versions kept everything there. "" when there is none.
std::string TemporaryRoot(const Environment& environment);

}  // namespace marovane
