// A loop whose clock moves only when nothing else is left to do.
#pragma once

#include <atomic>

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
  void Advance(Milliseconds time);

  int WatchReadable(int fd, std::function<void()> callback) override;
  void StopWatching(int watch) override { watches_.Remove(watch); }
  base::LocalTime Now() const override;
  Milliseconds Elapsed() const override { return elapsed_; }

 protected:
  void Pump(std::optional<Milliseconds> atMost) override;
  void Wake() override { isWoken_ = true; }

 private:
  bool RunReady(Milliseconds realTime);

  FdWatches watches_;
  base::LocalTime wallAtStart_;
  Milliseconds elapsed_{0};
  Milliseconds waited_{0};
  std::atomic<bool> isWoken_{false};
};

}  // namespace marovane
