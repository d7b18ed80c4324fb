#include "platform/host/host_environment.h"

#include <unistd.h>

#include <string_view>

#include "platform/run_time_error.h"

namespace marovane {

namespace {

std::filesystem::path ProgramPath() {
  std::error_code error;
  auto path = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) throw RunTimeError("cannot find out where the program stands: " + error.message());
  return path;
}

}  // namespace

Environment ReadHostEnvironment(const std::string& commandLine) {
  Environment environment;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    const std::string_view variable = *entry;
    const auto equals = variable.find('=');
    if (equals == std::string_view::npos) continue;
    environment.variables.emplace(variable.substr(0, equals), variable.substr(equals + 1));
  }
  environment.helperFolder = ProgramPath().parent_path();
  environment.programFolder = (environment.helperFolder / ".." / "share" / "marovane").lexically_normal();
  environment.commandLine = commandLine;
  return environment;
}

}  // namespace marovane
