// marovane-server: every server page of the program, for one learner's computer or for a school.
#include <fmt/format.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "engine/tolvex.h"
#include "server/command_line.h"
#include "server/process_end.h"
#include "server/services/log.h"

namespace {

using namespace server;

constexpr int kWrongUsage = 64;
constexpr int kPrivateFiles = 0077;

std::filesystem::path EngineData(const Command& command) {
  if (command.engineData.empty()) return tolvex::FindDataDir();
  if (std::filesystem::is_directory(command.engineData)) return command.engineData;
  throw std::runtime_error(fmt::format("the language data was not found in {}", command.engineData.string()));
}

void Serve(const Command& command) {
  HoldEndSignals();
  if (command.embedded) EndWithParent();
  ServerOptions options = command.server;
  options.engineData = EngineData(command);
  Server server(options, LoadTolvex(options.engineData));
  if (!command.accountFile.empty()) server.EnsureAccount(EnsureAccountFile(command.accountFile));
  server.Start();
  fmt::print("root={}\n", server.Root());
  std::fflush(stdout);
  WaitForEnd(command.embedded);
  server.Stop();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    umask(kPrivateFiles);
    const Command command = ParseCommandLine({argv + 1, argv + argc});
    if (command.help) {
      fmt::print("{}{}", kUsage, kTeacherUsage);
    } else if (command.teacher) {
      RunTeacherCommand(*command.teacher);
    } else {
      Serve(command);
    }
    return EXIT_SUCCESS;
  } catch (const UsageError& error) {
    LogError("{}; see marovane-server --help", error.what());
    return kWrongUsage;
  } catch (const std::exception& error) {
    LogError("{}", error.what());
    return EXIT_FAILURE;
  }
}
