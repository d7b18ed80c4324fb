// A timer that ticks in the event loop.
#pragma once

#include <chrono>
#include <functional>

#include "platform/event_loop.h"
#include "platform/property.h"

namespace marovane {

/// Ticks every Interval milliseconds while Enabled. A tick that was missed, because the loop was busy, is not
/// made up for.
class Timer {
 public:
  /// A visual timer only moves pictures (fades, progress bars), and ticks on while a transfer blocks the
  /// rest. A last step that does more has to wait then: EventLoop::IsBlocked.
  enum class Kind { kOrdinary, kVisual };

  Timer(EventLoop& loop, int interval, Kind kind = Kind::kOrdinary);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  Property<int> Interval;  ///< milliseconds
  Property<bool> Enabled{false};
  std::function<void()> onTick;

 private:
  friend class EventLoop;
  std::chrono::milliseconds IntervalTime() const { return std::chrono::milliseconds{Interval()}; }
  void Restart();
  void Tick();

  EventLoop& loop_;
  bool isVisual_;
  std::chrono::milliseconds due_{0};
  Subscription interval_;
  Subscription enabled_;
};

}  // namespace marovane
