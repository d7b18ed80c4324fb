#include "tests/support/fake_processes.h"

#include <utility>

#include "platform/run_time_error.h"

namespace marovane {

namespace {

class ScriptedPipe : public PipedProcess {
 public:
  ScriptedPipe(std::vector<std::string> lines, std::function<void()> onClosed)
      : lines_(std::move(lines)), onClosed_(std::move(onClosed)) {}
  ~ScriptedPipe() override { onClosed_(); }
  ScriptedPipe(const ScriptedPipe&) = delete;
  ScriptedPipe& operator=(const ScriptedPipe&) = delete;

  std::optional<std::string> ReadLine(int /*timeout*/) override {
    if (next_ == lines_.size()) return std::nullopt;
    return lines_[next_++];
  }

 private:
  std::vector<std::string> lines_;
  std::size_t next_ = 0;
  std::function<void()> onClosed_;
};

}  // namespace

void FakeProcesses::Install(const std::string& name, std::chrono::milliseconds time, Work work) {
  programs_[name] = {time, std::move(work), {}};
}

void FakeProcesses::InstallPiped(const std::string& name, std::vector<std::string> lines) {
  programs_[name] = {std::nullopt, {}, std::move(lines)};
}

int FakeProcesses::Add(const std::string& name) {
  running_[++lastId_] = name;
  return lastId_;
}

const FakeProcesses::Program& FakeProcesses::Launch(const base::ProcessStart& start) {
  fault.Step("start of " + start.program.string());
  const auto program = programs_.find(start.program.filename().string());
  if (program == programs_.end()) throw RunTimeError("no such program: " + start.program.string());
  started.push_back(start);
  return program->second;
}

void FakeProcesses::Start(const base::ProcessStart& start) {
  const Program program = Launch(start);
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
  auto lines = Launch(start).lines;
  const int id = Add(start.program.filename().string());
  return std::make_unique<ScriptedPipe>(std::move(lines), [this, id] { End(id); });
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
