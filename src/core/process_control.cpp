#include "core/process_control.h"

#include <algorithm>

#include "base/files.h"
#include "base/text.h"
#include "core/program.h"
#include "platform/environment.h"
#include "platform/processes.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

bool Matches(const ProcessInfo& process, std::string_view name, const std::filesystem::path& folder) {
  std::error_code gone;
  return base::Lower(process.name).ends_with(base::Lower(name)) &&
         std::filesystem::equivalent(process.folder, folder, gone);
}

}  // namespace

bool IsProcessRunning(Processes& processes, int id) {
  return std::ranges::count(processes.List(), id, &ProcessInfo::id) > 0;
}

bool KillProcessByName(Processes& processes, std::string_view name, const std::string& folder) {
  bool matched = false;
  try {
    for (const auto& process : processes.List()) {
      if (!Matches(process, name, folder)) continue;
      matched = true;
      processes.Terminate(process.id);
    }
  } catch (const RunTimeError&) {
    return matched;
  }
  return matched;
}

int StartHelper(Program& program, const std::string& folder, const std::string& name,
                const std::vector<std::string>& arguments) {
  const Machine& machine = program.machine;
  std::filesystem::path helper = folder + name;
  if (!machine.files.FileExists(helper)) helper = machine.environment.helperFolder / name;
  if (!machine.files.FileExists(helper)) throw RunTimeError("file not found: " + folder + name);
  return machine.processes.Start({.program = helper, .arguments = arguments, .workingFolder = folder});
}

}  // namespace marovane
