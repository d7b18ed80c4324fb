// marovane-server: every server page of the program, for one learner's computer or for a school.
#include <fmt/format.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "base/file_descriptor.h"
#include "engine/tolvex.h"
#include "server/command_line.h"
#include "server/services/data_folder.h"
#include "server/services/log.h"
#include "server/store/damage.h"

namespace {

using namespace server;

constexpr int kWrongUsage = 64;
constexpr int kPrivateFiles = 0077;

// Holds SIGTERM and SIGINT back, in this thread and all that it starts: no other thread may run yet.
sigset_t HoldEndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return signals;
}

bool InputHasEnded() {
  std::array<char, 256> ignored;
  const ssize_t length = read(STDIN_FILENO, ignored.data(), ignored.size());
  return length == 0 || (length < 0 && errno != EINTR && errno != EAGAIN);
}

// Returns at one of the signals, and when `watchInput` also at the end of standard input, whose other end the
// starting program holds: it closes however that program ends.
void WaitForEnd(const sigset_t& signals, bool watchInput) {
  const base::FileDescriptor held(signalfd(-1, &signals, SFD_CLOEXEC));
  std::array<pollfd, 2> sources = {{{held.Get(), POLLIN, 0}, {watchInput ? STDIN_FILENO : -1, POLLIN, 0}}};
  while (true) {
    if (poll(sources.data(), sources.size(), -1) < 0) continue;
    if (sources[0].revents != 0) break;
    if (sources[1].revents != 0 && InputHasEnded()) break;
  }
}

std::filesystem::path EngineData(const Command& command) {
  if (command.engineData.empty()) return tolvex::FindDataDir();
  if (std::filesystem::is_directory(command.engineData)) return command.engineData;
  throw std::runtime_error(fmt::format("the language data was not found in {}", command.engineData.string()));
}

// A learner's program must start without its old records: it brings them back itself.
void MakeUsable(const std::filesystem::path& database) {
  const auto aside = SetDamagedAside(database);
  if (!aside.empty()) LogError("{} was damaged and is now {}", database.string(), aside.string());
}

void Serve(const Command& command) {
  const sigset_t endSignals = HoldEndSignals();
  if (command.embedded)
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // the system ends this process with the one that started it
  ServerOptions options = command.server;
  options.engineData = EngineData(command);
  if (command.embedded) {
    MakeUsable(options.dataDir / "server.db");
  } else {
    ProtectNewSchool(MadeDataFolder(options.dataDir));
  }
  Server server(options, LoadTolvex(options.engineData));
  if (!command.accountFile.empty()) server.EnsureAccount(EnsureAccountFile(command.accountFile));
  server.Start();
  fmt::print("root={}\n", server.Root());
  std::fflush(stdout);
  WaitForEnd(endSignals, command.embedded);
  server.Stop();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    umask(kPrivateFiles);
    const Command command = ParseCommandLine({argv + 1, argv + argc});
    if (command.help) {
      fmt::print("{}{}{}", kUsage, kTeacherUsage, kPupilUsage);
    } else if (command.teacher) {
      RunTeacherCommand(*command.teacher);
    } else if (command.pupil) {
      RunPupilCommand(*command.pupil);
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
