#include "tests/support/real_server.h"

#include <sys/wait.h>

#include <algorithm>

#include "platform/run_time_error.h"

namespace marovane {

namespace {

constexpr int kPatience = 30'000;  // milliseconds
constexpr const char* kRootLine = "root=";

base::ProcessStart ServerStart(const std::vector<std::string>& arguments) {
  // A server that chooses its own place accepts no word about it.
  const bool hasPlace = std::ranges::count(arguments, "--prefix") > 0;
  base::ProcessStart start{MAROVANE_SERVER_PROGRAM, {}, {}};
  if (!hasPlace) start.arguments = {"--embedded"};
  if (hasPlace) start.arguments = {"--port", "0"};
  start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
  return start;
}

}  // namespace

RealServer::RealServer(EventLoop& loop, const std::vector<std::string>& arguments)
    : processes_(loop), process_(processes_.StartPiped(ServerStart(arguments))) {
  while (const auto line = process_->ReadLine(kPatience)) {
    if (!line->starts_with(kRootLine)) continue;
    root_ = line->substr(std::string(kRootLine).size());
    return;
  }
  throw RunTimeError("the server does not come up");
}

void RealServer::Kill() {
  for (const int id : processes_.Children()) {
    processes_.Terminate(id);
    siginfo_t ended;
    waitid(P_PID, static_cast<id_t>(id), &ended, WEXITED | WNOWAIT);
  }
  process_.reset();
}

}  // namespace marovane
