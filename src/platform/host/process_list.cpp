// The running processes as /proc lists them (proc(5)).
#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <fstream>
#include <sstream>

#include "platform/host/posix_processes.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;

// A file of a process that ends meanwhile fails with ESRCH, which a bare stream iterator would throw.
std::string ReadWhole(const fs::path& path) {
  const std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

int ProcessId(const fs::path& folder) {
  const std::string name = folder.filename().string();
  int id = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
  return error == std::errc{} && end == name.data() + name.size() ? id : 0;
}

bool IsOurs(const fs::path& folder) {
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && status.st_uid == geteuid();
}

// A process that has ended has neither arguments nor a program any more, also while it is still a zombie.
std::string ProgramName(const fs::path& folder) {
  const std::string arguments = ReadWhole(folder / "cmdline");
  const std::string first = arguments.substr(0, arguments.find('\0'));
  if (!first.empty()) return fs::path(first).filename().string();
  std::error_code ignored;
  return fs::read_symlink(folder / "exe", ignored).filename().string();
}

}  // namespace

std::vector<ProcessInfo> PosixProcesses::List() const {
  std::vector<ProcessInfo> processes;
  std::error_code error;
  for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
    const int id = ProcessId(entry->path());
    // Any of these may end while it is looked at; then there is nothing to read and it is left out.
    if (id == 0 || !IsOurs(entry->path())) continue;
    std::string name = ProgramName(entry->path());
    std::error_code ignored;
    if (!name.empty()) {
      processes.push_back({id, std::move(name), fs::read_symlink(entry->path() / "cwd", ignored)});
    }
  }
  return processes;
}

}  // namespace marovane
