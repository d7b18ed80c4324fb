// marovane-server as a process that runs on.
#pragma once

#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "base/process.h"

class ChildServer {
 public:
  /// Starts the program with these words. When `underParent`, a process in between is its parent.
  explicit ChildServer(const std::vector<std::string>& words, bool underParent = false);
  ~ChildServer();
  ChildServer(const ChildServer&) = delete;
  ChildServer& operator=(const ChildServer&) = delete;

  /// The root that it printed when it was ready; "" when it ended without one.
  std::string Root();
  void Signal(int signal) const { kill(process_.Id(), signal); }  ///< to the process that the test started
  void CloseInput() { input_.writeEnd.Close(); }
  /// True when the program ended within half a minute: nobody writes to its output any more.
  bool HasEnded();
  /// Exit status of the process that the test started; nothing when it does not end.
  std::optional<int> ExitStatus();

 private:
  base::Pipe input_, output_;
  base::Process process_;
  std::optional<int> status_;
  int outputEnd_;
  base::LineReader lines_;
};
