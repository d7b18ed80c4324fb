// The desktop edition, put together on the real machine.
#pragma once

#include <memory>
#include <string>

#include "app/compose.h"
#include "app/embedded_server.h"
#include "app/host_machine.h"
#include "base/file_lock.h"
#include "core/records_move.h"
#include "platform/processes.h"
#include "qt/qt_desktop.h"
#include "qt/qt_loop.h"
#include "qt/qt_windows.h"

namespace marovane {

/// Needs a QApplication made after PrepareApplication().
class DesktopProgram {
 public:
  /// Starts the program's own server, if there is one, and makes the rooms. Throws RunTimeError.
  /// @param edition the words of the command line
  explicit DesktopProgram(const std::string& edition);

  /// Shows the splash and the main window. False when the program has ended on the way.
  bool Start();
  /// Runs until the program ends.
  void Run() { loop_.Run(); }

  Composition& Rooms() { return *rooms_; }
  QtWindows& Windows() { return windows_; }
  QtLoop& Loop() { return loop_; }

 private:
  QtWindows::Options WindowOptions(const std::string& edition);
  std::string ServerRoot() const;
  bool IsOwnPage(const std::string& url) const;
  WebHeader ProofFor(const std::string& url) const;

  QtLoop loop_;
  QtDesktop desktop_;
  QtWindows windows_;
  StartPlace place_;
  base::FileLock lock_;
  EmbeddedServer server_;  // outlives the machine, which may still have something to send to it
  HostMachine host_;
  std::unique_ptr<Composition> rooms_;
};

}  // namespace marovane
