// A table of processes that exist only in the test.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/processes.h"
#include "platform/timer.h"
#include "tests/support/fault.h"
#include "tests/support/virtual_loop.h"

namespace marovane {

/// Programs are known by file name. Starting one that the test did not install is a RunTimeError, as for a
/// missing file. Each start is a step of the fault.
class FakeProcesses : public Processes {
 public:
  using Work = std::function<void(const base::ProcessStart&)>;

  explicit FakeProcesses(VirtualLoop& loop) : loop_(loop) {}

  /// A program that does its work when the time, above 0, has gone by on the virtual clock, and then ends.
  void Install(const std::string& name, std::chrono::milliseconds time, Work work = {}) {
    programs_[name] = {time, std::move(work)};
  }
  /// A program that runs until somebody ends it.
  void InstallHanging(const std::string& name) { programs_[name] = {}; }
  /// Adds a process that somebody else has started.
  /// @return its id
  int Add(const std::string& name, const std::filesystem::path& folder = "/") {
    const int id = ++lastId_;
    running_[id] = {id, name, folder};
    return id;
  }
  void End(int id) { running_.erase(id); }

  int Start(const base::ProcessStart& start) override {
    fault.Step("start of " + start.program.string());
    const auto found = programs_.find(start.program.filename().string());
    if (found == programs_.end()) throw RunTimeError("no such program: " + start.program.string());
    const Program program = found->second;
    started.push_back(start);
    const int id = Add(found->first, start.workingFolder);
    if (!program.time) return id;
    auto& timer =
        timers_.emplace_back(std::make_unique<Timer>(loop_, static_cast<int>(program.time->count())));
    timer->onTick = [this, id, start, work = program.work, timer = timer.get()] {
      timer->Enabled = false;
      if (!running_.contains(id)) return;  // ended before its work was done
      if (work) work(start);
      End(id);
    };
    timer->Enabled = true;
    return id;
  }
  /// No program has pipes.
  std::unique_ptr<PipedProcess> StartPiped(const base::ProcessStart& start) override {
    throw RunTimeError("no program with pipes: " + start.program.string());
  }
  std::vector<ProcessInfo> List() const override {
    std::vector<ProcessInfo> processes;
    for (const auto& [id, process] : running_) processes.push_back(process);
    return processes;
  }
  bool Terminate(int id) override {
    terminated.push_back(id);
    return running_.erase(id) > 0;
  }

  std::vector<base::ProcessStart> started;
  std::vector<int> terminated;
  Fault fault;

 private:
  struct Program {
    std::optional<std::chrono::milliseconds> time;  // none: hangs
    Work work;
  };

  VirtualLoop& loop_;
  std::map<std::string, Program> programs_;
  std::map<int, ProcessInfo> running_;
  std::vector<std::unique_ptr<Timer>> timers_;
  int lastId_ = 1000;
};

}  // namespace marovane
