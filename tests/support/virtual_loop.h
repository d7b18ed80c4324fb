// A loop whose clock moves only when nothing else is left to do.
#pragma once

#include <atomic>
#include <stdexcept>
#include <utility>

#include "platform/event_loop.h"
#include "platform/headless/fd_watches.h"

namespace marovane {

/// While a procedure waits and nothing is due, time jumps straight to the next timer. A wait that nothing can
/// end throws std::logic_error instead of hanging: nothing is due, no timer runs, and no file descriptor is
/// watched; or more than a day of the virtual clock was spent waiting. DoEvents by itself takes no time.
class VirtualLoop : public EventLoop {
 public:
  explicit VirtualLoop(base::LocalTime start = std::chrono::local_days{std::chrono::year{2026} / 11 / 5} +
                                               std::chrono::hours{9})
      : wallAtStart_(start) {}

  /// Lets time go by, as work does. Timers that become due fire at the next wait; in blocking work those that
  /// move pictures fire at once.
  void Advance(Milliseconds time) {
    elapsed_ += time;
    if (IsBlocked()) FireDueTimers();
  }
  /// Sets the wall clock; timers do not notice.
  void SetClock(base::LocalTime now) { wallAtStart_ += now - Now(); }

  int WatchReadable(int fd, std::function<void()> callback) override {
    return watches_.Add(fd, std::move(callback));
  }
  void StopWatching(int watch) override { watches_.Remove(watch); }
  base::LocalTime Now() const override {
    return wallAtStart_ + std::chrono::floor<std::chrono::seconds>(elapsed_);
  }
  base::UtcTime UtcNow() const override { return base::UtcTime{wallAtStart_.time_since_epoch()} + elapsed_; }
  Milliseconds Elapsed() const override { return elapsed_; }

 protected:
  void Pump(std::optional<Milliseconds> atMost) override {
    const bool isWoken = isWoken_.exchange(false);
    if (RunReady(Milliseconds{0}) || isWoken) return;
    if (atMost) {
      elapsed_ += *atMost;
      waited_ += *atMost;
      if (waited_ > kLongestRun) throw std::logic_error("waiting for more than a day of the virtual clock");
      return;
    }
    if (watches_.IsEmpty() || !RunReady(kRealPatience)) {
      throw std::logic_error("waiting for ever: nothing is due and no timer runs");
    }
  }
  void Wake() override { isWoken_ = true; }

 private:
  static constexpr std::chrono::hours kLongestRun{24};  // of all waits together
  // How long another process may really take to say something while nothing else is left to wait for.
  static constexpr std::chrono::seconds kRealPatience{30};

  bool RunReady(Milliseconds realTime) {
    const auto ready = watches_.Wait(realTime);
    for (const int watch : ready) {
      if (const auto callback = watches_.Find(watch)) RunHandler(callback);
    }
    return !ready.empty();
  }

  FdWatches watches_;
  base::LocalTime wallAtStart_;
  Milliseconds elapsed_{0};
  Milliseconds waited_{0};
  std::atomic<bool> isWoken_{false};
};

}  // namespace marovane
