#include "tests/support/fake_processes.h"

#include <utility>

#include "platform/run_time_error.h"

namespace marovane {

void FakeProcesses::Install(const std::string& name, std::chrono::milliseconds time, Work work) {
  programs_[name] = {time, std::move(work)};
}

int FakeProcesses::Add(const std::string& name) {
  running_[++lastId_] = name;
  return lastId_;
}

void FakeProcesses::Start(const base::ProcessStart& start) {
  fault.Step("start of " + start.program.string());
  const auto found = programs_.find(start.program.filename().string());
  if (found == programs_.end()) throw RunTimeError("no such program: " + start.program.string());
  const Program program = found->second;
  started.push_back(start);
  const int id = Add(start.program.filename().string());
  if (!program.time) return;
  auto& timer = timers_.emplace_back(std::make_unique<Timer>(loop_, static_cast<int>(program.time->count())));
  timer->onTick = [this, id, start, work = program.work, timer = timer.get()] {
    timer->Enabled = false;
    if (!running_.contains(id)) return;  // ended before its work was done
    if (work) work(start);
    End(id);
  };
  timer->Enabled = true;
}

std::unique_ptr<PipedProcess> FakeProcesses::StartPiped(const base::ProcessStart& start) {
  throw RunTimeError("no program with pipes: " + start.program.string());
}

std::vector<ProcessInfo> FakeProcesses::List() const {
  std::vector<ProcessInfo> processes;
  for (const auto& [id, name] : running_) processes.push_back({id, name});
  return processes;
}

bool FakeProcesses::Terminate(int id) {
  terminated.push_back(id);
  return running_.erase(id) > 0;
}

}  // namespace marovane
