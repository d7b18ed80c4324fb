// Working data: made sure at every start that it is there and of the right build.
#pragma once

#include <string>
#include <string_view>

namespace marovane {

struct Program;

/// Stamp of the record database that this program works with, first line of `dbver.set`.
inline constexpr std::string_view kDatabaseBuild = "20140302-2047";
/// `user_version` of a record database that this program works with. It brings older ones up to date.
inline constexpr int kSchemaVersion = 2;

/// Sets a record database of a newer version aside and notes that the account's data has to come back from
/// the server. A lost or damaged stamp of one that can be used is written anew. Failures end it quietly.
void CheckDatabaseBuild(Program& program);
/// Sets the record database aside under the time of day (a later second when that is taken), with the files
/// that belong to it.
/// @return where it is now; "" when there was none. Throws RunTimeError.
std::string SetRecordsAside(Program& program);
/// A free path in the folder of what was set aside, which is there then.
/// @param name of a file
std::string AsidePath(const Program& program, const std::string& name);
/// Unpacks an empty record database into a folder, which is made when it is missing. Throws RunTimeError.
void UnpackRecordsInto(Program& program, const std::string& folder);
/// Unpacks the record database when it is missing, and the engine's data, with a progress box.
void UnpackDataFiles(Program& program);
/// Shows message 404 when a database could not be unpacked.
void ShowMissingData(Program& program);
/// Keeps a copy of the updater that can run while the program's own folder is replaced. Failures end it
/// quietly.
void RefreshUpdater(Program& program);
enum class Wipe { kRecordsToo, kAllButRecords };
/// Deletes the files of the data folder. Databases are set aside, or stay. What cannot be moved or deleted
/// stays too.
void WipeDataFolder(Program& program, Wipe wipe);

}  // namespace marovane
