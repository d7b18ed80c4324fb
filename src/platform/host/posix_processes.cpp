#include "platform/host/posix_processes.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>

#include "platform/run_time_error.h"

namespace {

[[noreturn]] void Fail(const std::string& doing, int error) {
  throw RunTimeError(fmt::format("cannot {}: {}", doing, std::generic_category().message(error)));
}

// What a child gets as its standard input, output and error. -1: /dev/null.
struct Streams {
  int input = -1;
  int output = -1;
  int error = -1;
};

class SpawnActions {
 public:
  SpawnActions() { posix_spawn_file_actions_init(&actions_); }
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  void Give(int standard, int fd, int flags) {
    if (fd < 0) {
      posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", flags, 0);
    } else {
      posix_spawn_file_actions_adddup2(&actions_, fd, standard);
    }
  }
  void CloseTheRest() { posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1); }
  void WorkIn(const std::filesystem::path& folder) {
    if (!folder.empty()) posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
  }
  const posix_spawn_file_actions_t* Get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

// The child begins with no signal blocked or ignored, whatever holds here.
class SpawnAttributes {
 public:
  explicit SpawnAttributes(bool hasOwnSession) {
    posix_spawnattr_init(&attributes_);
    sigset_t none;
    sigset_t reset;
    sigemptyset(&none);
    sigemptyset(&reset);
    sigaddset(&reset, SIGPIPE);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &reset);
    const int flags =
        POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | (hasOwnSession ? POSIX_SPAWN_SETSID : 0);
    posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
  }
  ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;
  const posix_spawnattr_t* Get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_{};
};

int Spawn(const ProcessStart& start, const Streams& streams) {
  // The working folder changes before the program is looked for.
  const std::string program =
      start.program.has_parent_path() ? absolute(start.program).string() : start.program.string();
  std::vector<std::string> words{program};
  words.insert(words.end(), start.arguments.begin(), start.arguments.end());
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (auto& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  SpawnActions actions;
  actions.Give(STDIN_FILENO, streams.input, O_RDONLY);
  actions.Give(STDOUT_FILENO, streams.output, O_WRONLY);
  actions.Give(STDERR_FILENO, streams.error, O_WRONLY);
  actions.WorkIn(start.workingFolder);
  actions.CloseTheRest();
  const SpawnAttributes attributes(start.outlivesUs);
  pid_t id = 0;
  const int error =
      posix_spawnp(&id, program.c_str(), actions.Get(), attributes.Get(), arguments.data(), environ);
  if (error != 0) Fail("start " + start.program.string(), error);
  return id;
}

struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) < 0) Fail("make a pipe", errno);
    readEnd = base::FileDescriptor(ends[0]);
    writeEnd = base::FileDescriptor(ends[1]);
  }
  base::FileDescriptor readEnd, writeEnd;
};

class PosixPipedProcess : public PipedProcess {
 public:
  PosixPipedProcess(base::FileDescriptor input, base::FileDescriptor output)
      : input_(std::move(input)), output_(std::move(output)) {}

  std::optional<std::string> ReadLine(int timeout) override {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds{timeout};
    while (true) {
      if (auto line = TakeLine()) return line;
      if (hasEnded_ || !WaitForOutput(until)) return std::nullopt;
      ReadSome();
    }
  }

 private:
  std::optional<std::string> TakeLine() {
    const auto end = read_.find('\n');
    if (end == std::string::npos && (!hasEnded_ || read_.empty())) return std::nullopt;
    std::string line = read_.substr(0, end);
    read_.erase(0, end == std::string::npos ? end : end + 1);
    if (line.ends_with('\r')) line.pop_back();
    return line;
  }

  bool WaitForOutput(std::chrono::steady_clock::time_point until) const {
    pollfd polled{output_.Get(), POLLIN, 0};
    while (true) {
      const auto rest =
          std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now()).count();
      const int result = poll(&polled, 1, rest > 0 ? static_cast<int>(rest) : 0);
      if (result >= 0) return result > 0;
      if (errno != EINTR) return false;
    }
  }

  void ReadSome() {
    std::array<char, 4096> buffer{};
    const auto count = read(output_.Get(), buffer.data(), buffer.size());
    if (count > 0) {
      read_.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      hasEnded_ = true;
    }
  }

  base::FileDescriptor input_;  // only kept open
  base::FileDescriptor output_;
  std::string read_;
  bool hasEnded_ = false;
};

}  // namespace

PosixProcesses::~PosixProcesses() {
  for (const auto& [watch, child] : children_) loop_.StopWatching(watch);
}

void PosixProcesses::Start(const ProcessStart& start) { Watch(Spawn(start, {})); }

std::unique_ptr<PipedProcess> PosixProcesses::StartPiped(const ProcessStart& start) {
  Pipe input;
  Pipe output;
  Watch(Spawn(start, {input.readEnd.Get(), output.writeEnd.Get(), STDERR_FILENO}));
  return std::make_unique<PosixPipedProcess>(std::move(input.writeEnd), std::move(output.readEnd));
}

void PosixProcesses::Watch(int id) {
  base::FileDescriptor end(static_cast<int>(syscall(SYS_pidfd_open, id, 0)));
  if (!end.IsOpen()) Fail("watch a program that was started", errno);
  const int fd = end.Get();
  // The number of the watch is known only afterwards.
  auto watch = std::make_shared<int>(0);
  *watch = loop_.WatchReadable(fd, [this, watch] { Reap(*watch); });
  children_.emplace(*watch, Child{id, std::move(end)});
}

void PosixProcesses::Reap(int watch) {
  const auto found = children_.find(watch);
  if (found == children_.end()) return;
  loop_.StopWatching(watch);
  waitpid(found->second.id, nullptr, WNOHANG);
  children_.erase(found);
}

std::vector<int> PosixProcesses::Children() const {
  std::vector<int> ids;
  for (const auto& [watch, child] : children_) ids.push_back(child.id);
  return ids;
}

bool PosixProcesses::Terminate(int id) {
  // 0 and below would mean whole groups of processes.
  return id > 0 && kill(id, SIGKILL) == 0;
}
