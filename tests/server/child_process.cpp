#include "tests/server/child_process.h"

#include <poll.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds kPatience{30};

base::ProcessStart StartOf(std::vector<std::string> words, bool underParent) {
  if (!underParent) return {.program = SERVER_PROGRAM, .arguments = std::move(words)};
  // A shell does not pass its input to a background process unless asked to.
  words.insert(words.begin(), {"-c", R"(exec 3<&0; "$0" "$@" <&3 3<&- & exec >&-; wait)", SERVER_PROGRAM});
  return {.program = "/bin/sh", .arguments = std::move(words)};
}

}  // namespace

ChildServer::ChildServer(const std::vector<std::string>& words, bool underParent)
    : process_(StartOf(words, underParent), {input_.readEnd.Get(), output_.writeEnd.Get(), STDERR_FILENO}),
      outputEnd_(output_.readEnd.Get()),
      lines_(std::move(output_.readEnd)) {
  input_.readEnd.Close();
  output_.writeEnd.Close();
}

ChildServer::~ChildServer() {
  if (status_) return;
  Signal(SIGKILL);
  process_.Wait(kPatience);
}

std::string ChildServer::Root() {
  const std::string line = lines_.ReadLine(kPatience).value_or("");
  return line.starts_with("root=") ? line.substr(5) : "";
}

bool ChildServer::HasEnded() {
  while (lines_.ReadLine(kPatience)) continue;
  pollfd polled{outputEnd_, 0, 0};
  return poll(&polled, 1, 0) == 1 && (polled.revents & POLLHUP) != 0;
}

std::optional<int> ChildServer::ExitStatus() { return status_ = process_.Wait(kPatience); }
