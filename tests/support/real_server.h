// The real server as a process of its own.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/host/posix_processes.h"

namespace marovane {

/// Starts the server that was built beside the tests, on a free port of the loopback. It ends with this
/// object. Throws RunTimeError when it does not come up within half a minute.
class RealServer {
 public:
  /// @param arguments more words for the server, such as {"--data", folder}; with "--prefix" it is one
  /// for a school, otherwise one of the program's own
  RealServer(EventLoop& loop, const std::vector<std::string>& arguments);
  ~RealServer() { Kill(); }
  RealServer(const RealServer&) = delete;
  RealServer& operator=(const RealServer&) = delete;

  /// Address that the names of its pages follow; ends in "/".
  const std::string& Root() const { return root_; }
  /// Ends the server as a crash would, and returns when nobody answers any more.
  void Kill();

 private:
  PosixProcesses processes_;
  std::unique_ptr<PipedProcess> process_;
  std::string root_;
};

}  // namespace marovane
