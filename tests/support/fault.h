// A fault that strikes at a chosen step.
#pragma once

#include <string>

#include "platform/run_time_error.h"

namespace marovane {

/// Thrown where the program is to be taken as killed. It is no std::exception, so that no error handler of
/// the program can take it.
struct Killed {};

/// Does the work. True when the program died in it.
template <typename Work>
bool DiesIn(const Work& work) {
  try {
    work();
    return false;
  } catch (const Killed&) {
    return true;
  }
}

/// Counts the steps of a fake from 1 and fails one of them, or lets the program die before one of them. A
/// dead program makes no further step.
class Fault {
 public:
  void FailAt(int step) { failAt_ = step; }
  void KillAt(int step) { killAt_ = step; }
  /// Steps taken so far.
  int Steps() const { return steps_; }
  void Reset() { *this = {}; }

  /// To be called before each step. Throws RunTimeError or Killed when the fault strikes.
  void Step(const std::string& what) {
    ++steps_;
    if (killAt_ > 0 && steps_ >= killAt_) throw Killed{};
    if (steps_ == failAt_) throw RunTimeError(what + " failed, as the test wanted");
  }

 private:
  int steps_ = 0;
  int failAt_ = 0;
  int killAt_ = 0;
};

}  // namespace marovane
