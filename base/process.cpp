#include "base/process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include "base/error.h"

namespace base {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

[[noreturn]] void Fail(const std::string& doing, int error) {
  throw Error(fmt::format("cannot {}: {}", doing, std::generic_category().message(error)));
}

class SpawnActions {
 public:
  SpawnActions(const Streams& streams, const std::filesystem::path& workingFolder) {
    posix_spawn_file_actions_init(&actions_);
    Give(STDIN_FILENO, streams.input, O_RDONLY);
    Give(STDOUT_FILENO, streams.output, O_WRONLY);
    Give(STDERR_FILENO, streams.error, O_WRONLY);
    if (!workingFolder.empty()) posix_spawn_file_actions_addchdir_np(&actions_, workingFolder.c_str());
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
  }
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  const posix_spawn_file_actions_t* Get() const { return &actions_; }

 private:
  void Give(int standard, int fd, int flags) {
    if (fd < 0) {
      posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", flags, 0);
    } else {
      posix_spawn_file_actions_adddup2(&actions_, fd, standard);
    }
  }

  posix_spawn_file_actions_t actions_{};
};

// The child begins with no signal blocked, and ignores none of those that programs here ignore.
class SpawnAttributes {
 public:
  explicit SpawnAttributes(bool hasOwnSession) {
    posix_spawnattr_init(&attributes_);
    sigset_t none;
    sigset_t reset;
    sigemptyset(&none);
    sigemptyset(&reset);
    for (const int signal : {SIGPIPE, SIGXFSZ}) sigaddset(&reset, signal);
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

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (auto& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

int Spawn(const ProcessStart& start, const Streams& streams) {
  // The working folder changes before the program is looked for.
  const std::string program =
      start.program.has_parent_path() ? absolute(start.program).string() : start.program.string();
  std::vector<std::string> words{program};
  words.insert(words.end(), start.arguments.begin(), start.arguments.end());
  auto variables = start.environment.value_or(std::vector<std::string>());
  const SpawnActions actions(streams, start.workingFolder);
  const SpawnAttributes attributes(start.hasOwnSession);
  pid_t id = 0;
  const int error =
      posix_spawnp(&id, program.c_str(), actions.Get(), attributes.Get(), Pointers(words).data(),
                   start.environment ? Pointers(variables).data() : environ);
  if (error != 0) Fail("start " + start.program.string(), error);
  return id;
}

// False when the time ran out first.
bool WaitReadable(std::vector<pollfd>& polled, Clock::time_point until) {
  while (true) {
    const auto rest = std::max(milliseconds{0}, std::chrono::ceil<milliseconds>(until - Clock::now()));
    const int ready = poll(polled.data(), polled.size(), static_cast<int>(rest.count()));
    if (ready >= 0) return ready > 0;
    if (errno != EINTR) return false;
  }
}

bool WaitReadable(const FileDescriptor& file, Clock::time_point until) {
  std::vector<pollfd> polled{{file.Get(), POLLIN, 0}};
  return WaitReadable(polled, until);
}

// False at its end.
bool ReadSome(int file, std::string& text) {
  std::array<char, 4096> buffer{};
  const auto count = read(file, buffer.data(), buffer.size());
  if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
  return count > 0 || (count < 0 && errno == EINTR);
}

// Reads both until nobody writes to them any more. False when the time ran out.
bool ReadBoth(const Pipe& output, const Pipe& errors, RunResult& result, Clock::time_point until) {
  std::vector<pollfd> polled{{output.readEnd.Get(), POLLIN, 0}, {errors.readEnd.Get(), POLLIN, 0}};
  while (polled[0].fd >= 0 || polled[1].fd >= 0) {
    if (!WaitReadable(polled, until)) return false;
    for (auto& [fd, events, found] : polled) {
      std::string& text = fd == output.readEnd.Get() ? result.output : result.errors;
      if (found != 0 && !ReadSome(fd, text)) fd = -1;
    }
  }
  return true;
}

}  // namespace

Pipe::Pipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) < 0) Fail("make a pipe", errno);
  readEnd = FileDescriptor(ends[0]);
  writeEnd = FileDescriptor(ends[1]);
}

Process::Process(const ProcessStart& start, const Streams& streams)
    : hasOwnSession_(start.hasOwnSession),
      id_(Spawn(start, streams)),
      end_(static_cast<int>(syscall(SYS_pidfd_open, id_, 0))) {
  if (end_.IsOpen()) return;
  const int error = errno;
  Kill();
  waitpid(id_, nullptr, 0);
  Fail("watch a program that was started", error);
}

std::optional<int> Process::Wait(milliseconds patience) {
  constexpr int kSignalBase = 128;
  if (!WaitReadable(end_, Clock::now() + patience)) return std::nullopt;
  int raw = 0;
  waitpid(id_, &raw, 0);
  return WIFEXITED(raw) ? WEXITSTATUS(raw) : kSignalBase + WTERMSIG(raw);
}

void Process::Kill() const { kill(hasOwnSession_ ? -id_ : id_, SIGKILL); }

std::optional<std::string> LineReader::ReadLine(milliseconds patience) {
  const auto until = Clock::now() + patience;
  while (true) {
    if (auto line = NextLine()) return line;
    if (hasEnded_ || !WaitReadable(output_, until)) return std::nullopt;
    hasEnded_ = !ReadSome(output_.Get(), read_);
  }
}

std::optional<std::string> LineReader::NextLine() {
  const auto end = read_.find('\n');
  if (end == std::string::npos && (!hasEnded_ || read_.empty())) return std::nullopt;
  std::string line = read_.substr(0, end);
  read_.erase(0, end == std::string::npos ? end : end + 1);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::optional<RunResult> RunToEnd(const ProcessStart& start, milliseconds patience, int input) {
  const auto until = Clock::now() + patience;
  Pipe output;
  Pipe errors;
  Process process(start, {input, output.writeEnd.Get(), errors.writeEnd.Get()});
  output.writeEnd.Close();
  errors.writeEnd.Close();
  RunResult result;
  const bool isRead = ReadBoth(output, errors, result, until);
  const auto status =
      isRead ? process.Wait(std::chrono::ceil<milliseconds>(until - Clock::now())) : std::nullopt;
  if (!status || start.hasOwnSession) process.Kill();
  if (!status) {
    process.Wait(std::chrono::minutes{1});  // ended already, but for the system
    return std::nullopt;
  }
  result.status = *status;
  return result;
}

}  // namespace base
