// Helper programs: found, started and ended by name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace marovane {

class Processes;
struct Program;

/// True when the file name of some running process ends in `name`, case ignored.
bool IsProcessRunning(Processes& processes, std::string_view name);
/// True when the process with this id runs.
bool IsProcessRunning(Processes& processes, int id);
/// Ends every process whose name ends so. True when at least one matched.
bool KillProcessByName(Processes& processes, std::string_view name);
/// Starts a helper program, looked for in the folder named and then beside this program, with the folder as
/// its working directory. Throws RunTimeError when it is in neither or does not start.
void StartHelper(Program& program, const std::string& folder, const std::string& name,
                 const std::vector<std::string>& arguments);

}  // namespace marovane
