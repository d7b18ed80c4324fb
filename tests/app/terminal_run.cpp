#include "tests/app/terminal_run.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

namespace {

struct Pipe {
  Pipe() {
    if (pipe2(ends.data(), O_CLOEXEC) < 0) throw std::system_error(errno, std::generic_category(), "pipe");
  }
  std::array<int, 2> ends{};  // read, write
};

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (auto& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Reads both until nobody writes to them any more.
void ReadBoth(std::array<pollfd, 2> sources, std::array<std::string*, 2> texts) {
  int open = 2;
  std::array<char, 4096> buffer{};
  while (open > 0 && poll(sources.data(), sources.size(), -1) > 0) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
      if (sources[i].revents == 0) continue;
      const auto count = read(sources[i].fd, buffer.data(), buffer.size());
      if (count > 0) {
        texts[i]->append(buffer.data(), static_cast<std::size_t>(count));
      } else {
        close(sources[i].fd);
        sources[i].fd = -1;
        --open;
      }
    }
  }
}

}  // namespace

TerminalRun RunTerminalProgram(const std::vector<std::string>& words, const std::string& input,
                               const std::map<std::string, std::string>& environment) {
  std::vector<std::string> arguments{TERMINAL_PROGRAM};
  arguments.insert(arguments.end(), words.begin(), words.end());
  std::vector<std::string> variables;
  for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
  Pipe in;
  Pipe out;
  Pipe error;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in.ends[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, out.ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, error.ends[1], STDERR_FILENO);
  pid_t id = 0;
  const int failure = posix_spawn(&id, TERMINAL_PROGRAM, &actions, nullptr, Pointers(arguments).data(),
                                  Pointers(variables).data());
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) throw std::system_error(failure, std::generic_category(), TERMINAL_PROGRAM);
  for (const int fd : {in.ends[0], out.ends[1], error.ends[1]}) close(fd);
  const auto written = write(in.ends[1], input.data(), input.size());  // short enough for any pipe
  close(in.ends[1]);
  if (written < 0 && errno != EPIPE) throw std::system_error(errno, std::generic_category(), "write");

  TerminalRun run;
  ReadBoth({{{out.ends[0], POLLIN, 0}, {error.ends[0], POLLIN, 0}}}, {&run.output, &run.errors});
  int status = 0;
  waitpid(id, &status, 0);
  if (WIFEXITED(status)) run.status = WEXITSTATUS(status);
  return run;
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
