// How far an update has come, for the learner who waits for it.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace updater {

/// The steps of an update, in their order.
enum class Step { kFinding, kBringing, kTrying, kSwitching, kDone };

class Progress {
 public:
  /// Takes how much of the whole is done, 0 to 100, and what is going on. It must not throw: an update does
  /// not depend on who watches.
  using Watcher = std::function<void(int percent, std::string_view step)>;

  /// @param watcher may be empty
  explicit Progress(Watcher watcher) : watcher_(std::move(watcher)) {}

  void Begin(Step step);
  /// How much of the step is done, of how much. What was done once stays done.
  void Advance(std::uint64_t done, std::uint64_t all);

 private:
  void Reach(int percent);

  Watcher watcher_;
  Step step_ = Step::kFinding;
  int percent_ = -1;
};

}  // namespace updater
