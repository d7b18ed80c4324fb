#include "platform/host/posix_processes.h"

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <utility>

namespace marovane {

namespace {

class PosixPipedProcess : public PipedProcess {
 public:
  PosixPipedProcess(base::FileDescriptor input, base::FileDescriptor output)
      : input_(std::move(input)), output_(std::move(output)) {}

  std::optional<std::string> ReadLine(int timeout) override {
    return output_.ReadLine(std::chrono::milliseconds{timeout});
  }

 private:
  base::FileDescriptor input_;  // only kept open
  base::LineReader output_;
};

}  // namespace

PosixProcesses::~PosixProcesses() {
  for (const auto& [watch, child] : children_) loop_.StopWatching(watch);
}

int PosixProcesses::Start(const base::ProcessStart& start) { return Watch(base::Process(start)); }

std::unique_ptr<PipedProcess> PosixProcesses::StartPiped(const base::ProcessStart& start) {
  base::Pipe input;
  base::Pipe output;
  Watch(base::Process(start, {input.readEnd.Get(), output.writeEnd.Get(), STDERR_FILENO}));
  return std::make_unique<PosixPipedProcess>(std::move(input.writeEnd), std::move(output.readEnd));
}

int PosixProcesses::Watch(base::Process child) {
  const int id = child.Id();
  // The number of the watch is known only afterwards.
  auto watch = std::make_shared<int>(0);
  *watch = loop_.WatchReadable(child.End(), [this, watch] { Reap(*watch); });
  children_.emplace(*watch, std::move(child));
  return id;
}

void PosixProcesses::Reap(int watch) {
  const auto found = children_.find(watch);
  if (found == children_.end()) return;
  loop_.StopWatching(watch);
  found->second.Wait(std::chrono::milliseconds{0});
  children_.erase(found);
}

std::vector<int> PosixProcesses::Children() const {
  std::vector<int> ids;
  for (const auto& [watch, child] : children_) ids.push_back(child.Id());
  return ids;
}

bool PosixProcesses::Terminate(int id) {
  // 0 and below would mean whole groups of processes.
  return id > 0 && kill(id, SIGKILL) == 0;
}

}  // namespace marovane
