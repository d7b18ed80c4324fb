// Helper programs: found, started and ended by name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace marovane {

class Processes;
struct Program;

/// True when the process with this id runs.
bool IsProcessRunning(Processes& processes, int id);
/// Ends every process whose name ends so, case ignored, and which works in the folder. True when at least one
/// matched. The helpers of another folder answer to another program.
bool KillProcessByName(Processes& processes, std::string_view name, const std::string& folder);
/// Starts a helper program, looked for in the folder named and then beside this program, with the folder as
/// its working directory. Throws RunTimeError when it is in neither or does not start.
/// @return its id
int StartHelper(Program& program, const std::string& folder, const std::string& name,
                const std::vector<std::string>& arguments);

}  // namespace marovane
