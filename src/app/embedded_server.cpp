#include "app/embedded_server.h"

#include "base/files.h"
#include "core/data_paths.h"
#include "core/key_value_file.h"
#include "platform/environment.h"
#include "platform/machine.h"
#include "platform/processes.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

// The password of the made account is kept, so that nobody is asked for one that nobody has typed.
void WriteFirstSetup(const Machine& machine) {
  const std::string folder = WorkingRoot(machine.environment) + "/marovane";
  const std::string setupFile = folder + "/setup.set";
  if (machine.files.FileExists(setupFile)) return;
  machine.files.CreateFolder(folder, true);
  ReadWriteSetFile(machine.files, setupFile, "W", "autoKeyinPw", "1");
}

std::string ReadRoot(PipedProcess& server) {
  constexpr int kPatience = 120'000;  // milliseconds; one that fails ends at once
  constexpr std::string_view kKey = "root=";
  while (const auto line = server.ReadLine(kPatience)) {
    if (line->starts_with(kKey)) return line->substr(kKey.size());
  }
  throw RunTimeError("marovane-server did not start");
}

}  // namespace

EmbeddedServer StartEmbeddedServer(Machine& machine, InstallationValues& installation) {
  if (!installation.serverRoot.empty()) return nullptr;
  const std::string data = WorkingRoot(machine.environment) + "/marovane-server";
  machine.files.CreateFolder(data, true);
  auto server = machine.processes.StartPiped(
      {.program = machine.environment.helperFolder / "marovane-server",
       .arguments = {"--embedded", "--data", data, "--account", AccountFile(machine.environment)},
       .workingFolder = data});
  const std::string root = ReadRoot(*server);
  installation.serverRoot = root;
  installation.hasOwnServer = true;
  if (installation.campusServerRoot.empty()) installation.campusServerRoot = root;
  if (installation.webSiteRoot.empty()) installation.webSiteRoot = root;
  WriteFirstSetup(machine);
  return server;
}

}  // namespace marovane
