#include "tests/app/terminal_run.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/support/run_program.h"

namespace marovane {

base::RunResult RunTerminalProgram(const std::vector<std::string>& words, const std::string& input,
                                   const std::map<std::string, std::string>& environment) {
  std::vector<std::string> variables;
  for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
  return RunProgram({.program = TERMINAL_PROGRAM, .arguments = words, .environment = variables}, input);
}

std::vector<std::string> ProcessesThatName(const std::string& path) {
  std::vector<std::string> found;
  for (const auto& folder : std::filesystem::directory_iterator("/proc")) {
    const std::ifstream file(folder.path() / "cmdline", std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();  // does not throw when the process ends meanwhile
    const std::string line = text.str();
    if (line.find(path) != std::string::npos) found.push_back(line);
  }
  return found;
}

}  // namespace marovane
