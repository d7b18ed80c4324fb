#include "updater/child.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const auto& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

// Starts a program in a process group of its own. -1 when it cannot be started.
pid_t Spawn(const std::vector<std::string>& words, char** environment, int output) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  if (output >= 0) {
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  } else {
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  }
  posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setpgroup(&attributes, 0);
  sigset_t reset;
  sigemptyset(&reset);
  for (const int signal : {SIGPIPE, SIGXFSZ}) sigaddset(&reset, signal);
  posix_spawnattr_setsigdefault(&attributes, &reset);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
  pid_t id = -1;
  const int error =
      posix_spawn(&id, words[0].c_str(), &actions, &attributes, Pointers(words).data(), environment);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  return error == 0 ? id : -1;
}

int StatusOf(int raw) {
  constexpr int kSignalBase = 128;
  return WIFEXITED(raw) ? WEXITSTATUS(raw) : kSignalBase + WTERMSIG(raw);
}

// Reads until everybody has closed the output. False when the time ran out.
bool ReadAll(int output, std::string& text, Clock::time_point until) {
  std::array<char, 4096> buffer{};
  while (true) {
    const auto rest = std::chrono::ceil<milliseconds>(until - Clock::now()).count();
    pollfd polled{output, POLLIN, 0};
    const int ready = rest > 0 ? poll(&polled, 1, static_cast<int>(rest)) : 0;
    if (ready == 0) return false;
    const ssize_t count = ready < 0 ? -1 : read(output, buffer.data(), buffer.size());
    if (count == 0) return true;
    if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) return false;
  }
}

// The exit status, once there is one.
std::optional<int> WaitFor(pid_t id, Clock::time_point until) {
  constexpr milliseconds kPause{20};
  int raw = 0;
  while (true) {
    const pid_t ended = waitpid(id, &raw, WNOHANG);
    if (ended == id) return StatusOf(raw);
    if (ended < 0 && errno != EINTR) return std::nullopt;
    if (Clock::now() >= until) return std::nullopt;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace

std::optional<ChildResult> RunToEnd(const std::vector<std::string>& words,
                                    const std::vector<std::string>& environment, milliseconds patience) {
  std::array<int, 2> pipe{};
  if (pipe2(pipe.data(), O_CLOEXEC) < 0) return std::nullopt;
  const auto until = Clock::now() + patience;
  const pid_t id = Spawn(words, Pointers(environment).data(), pipe[1]);
  close(pipe[1]);
  ChildResult result;
  const bool hasEnded = id > 0 && ReadAll(pipe[0], result.output, until);
  close(pipe[0]);
  if (id < 0) return std::nullopt;
  const auto status = hasEnded ? WaitFor(id, until) : std::nullopt;
  kill(-id, SIGKILL);  // also what it may have left behind
  if (!status) {
    waitpid(id, nullptr, 0);
    return std::nullopt;
  }
  result.status = *status;
  return result;
}

bool StartsWell(const std::vector<std::string>& words, milliseconds watched) {
  const pid_t id = Spawn(words, environ, -1);
  return id > 0 && WaitFor(id, Clock::now() + watched).value_or(0) == 0;
}
