// Processes of this machine.
#pragma once

#include <map>

#include "platform/event_loop.h"
#include "platform/processes.h"

namespace marovane {

/// Starts programs directly, without a shell. A child gets no file descriptor of this program: its standard
/// input and output are /dev/null, or the two pipes, and its standard error /dev/null, or this program's own
/// with pipes. Children that still run when this object goes run on.
class PosixProcesses : public Processes {
 public:
  explicit PosixProcesses(EventLoop& loop) : loop_(loop) {}
  ~PosixProcesses() override;
  PosixProcesses(const PosixProcesses&) = delete;
  PosixProcesses& operator=(const PosixProcesses&) = delete;

  /// A program named without a folder is looked for along PATH.
  int Start(const base::ProcessStart& start) override;
  std::unique_ptr<PipedProcess> StartPiped(const base::ProcessStart& start) override;
  /// A process goes by the file name of its first argument, or of its program where it has none.
  std::vector<ProcessInfo> List() const override;
  /// Kills at once (SIGKILL). False when there is no such process or it belongs to somebody else.
  bool Terminate(int id) override;
  /// Ids of the programs started here that have not been seen to end.
  std::vector<int> Children() const;

 private:
  int Watch(base::Process child);
  void Reap(int watch);

  EventLoop& loop_;
  std::map<int, base::Process> children_;  // by number of the watch
};

}  // namespace marovane
