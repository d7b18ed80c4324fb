// marovane-server as a process, with its standard streams in the test's hands.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

class ChildServer {
 public:
  /// Starts the program with these words. When `underParent`, a process in between is its parent.
  explicit ChildServer(const std::vector<std::string>& words, bool underParent = false);
  ~ChildServer();
  ChildServer(const ChildServer&) = delete;
  ChildServer& operator=(const ChildServer&) = delete;

  /// The root that it printed when it was ready; "" when it ended without one.
  std::string Root();
  void Signal(int signal) const;              ///< to the process that the test started
  void Write(const std::string& text) const;  ///< to its standard input; it may have ended without reading
  void CloseInput();
  /// True when the program ended within half a minute: nobody writes to its output any more.
  bool HasEnded();
  /// Exit status of the process that the test started, -1 when a signal ended it.
  int ExitStatus();
  std::string Output();  ///< all that it wrote on standard output until its end
  std::string Errors();  ///< all that it wrote on standard error until its end

 private:
  pid_t started_ = -1;
  int input_ = -1;
  int output_ = -1;
  int errors_ = -1;
};
