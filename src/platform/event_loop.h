// The loop in which everything happens: timers, waiting, handlers, the clock.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <stop_token>
#include <vector>

#include "base/day.h"

namespace marovane {

class Timer;

/// The base of all event loops. It keeps the timers and the posted tasks; a loop of its own kind supplies the
/// clocks and the way to sleep. All calls but Post are made on the one thread of the program.
class EventLoop {
 public:
  using Milliseconds = std::chrono::milliseconds;

  EventLoop() = default;
  virtual ~EventLoop() = default;
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;

  /// Runs what is due: posted tasks, timers, input. Returns at once when nothing is.
  void DoEvents();

  /// The one way to wait: sleeps until something happened, then asks again. Throws ProgramEnd when the
  /// program ends meanwhile.
  void WaitUntil(const std::function<bool()>& isMet);
  /// The same for a limited time of the steady clock.
  /// @return whether it was met
  bool WaitUntil(const std::function<bool()>& isMet, Milliseconds atMost);
  /// Lets time go by while events go on.
  void Wait(Milliseconds time);

  /// Runs until End is called. Swallows nothing but the ProgramEnd of that call.
  void Run();

  /// Ends the program: throws ProgramEnd here, and in every wait from now on.
  [[noreturn]] void End();
  bool HasEnded() const { return ended_; }

  /// Has a task run by the loop. May be called from any thread.
  void Post(std::function<void()> task);

  /// Runs one event's handler. An exception that no handler took ends the event alone and goes to
  /// onUnhandledError; without such a procedure, or while work blocks, it goes on to the caller.
  void RunHandler(const std::function<void()>& handler);
  std::function<void(const std::exception&)> onUnhandledError;
  /// Called before each handler. What it returns is called, before onUnhandledError, when that handler has
  /// failed: it repairs what the handler has left half done.
  std::function<std::function<void()>()> onHandler;

  /// Marks the stretch of code as part of a handler.
  class HandlerScope {
   public:
    explicit HandlerScope(EventLoop& loop) : loop_(loop) { ++loop_.depth_; }
    ~HandlerScope();
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;

   private:
    EventLoop& loop_;
  };

  /// Keeps an object until no handler is running, so that a procedure may unload its own window.
  void DisposeLater(std::shared_ptr<void> object);

  /// Does blocking work, such as a transfer, for a caller who waits for it. Meanwhile only painting happens:
  /// timers that move pictures tick. Everything else that comes due, the last step of a fade as well as a
  /// click, waits for the next DoEvents or WaitUntil. What the work throws goes on to the caller. Work or a
  /// wait inside such work is a fault of the program: std::logic_error.
  void RunBlocking(const std::function<void()>& work);
  bool IsBlocked() const { return isBlocked_; }
  /// Asks work that blocks to stop. May be called from any thread.
  std::stop_token StopToken() const { return stop_.get_token(); }

  /// The learner wants whatever is going on to end. Work that blocks is asked to stop; whoever waits between
  /// two requests compares the number of times.
  void BreakOff();
  int TimesBrokenOff() const { return timesBrokenOff_; }

  /// Calls back, once for each time, when a file descriptor can be read. The number stops it again.
  virtual int WatchReadable(int fd, std::function<void()> callback) = 0;
  virtual void StopWatching(int watch) = 0;

  /// The wall clock, as local civil time.
  virtual base::LocalTime Now() const = 0;
  /// The same clock as it counts for all time zones.
  virtual base::UtcTime UtcNow() const {
    return std::chrono::floor<Milliseconds>(std::chrono::system_clock::now());
  }

  /// The steady clock that timers follow.
  virtual Milliseconds Elapsed() const = 0;

 protected:
  /// Lets the machine's own events in and sleeps until there are some, at most for the given time (for ever
  /// without one). A time of zero only polls.
  virtual void Pump(std::optional<Milliseconds> atMost) = 0;

  /// Wakes a Pump that sleeps. Called from any thread.
  virtual void Wake() = 0;

  /// Does the work of RunBlocking. A loop with windows paints meanwhile.
  virtual void Block(const std::function<void()>& work) { work(); }

  /// Called when the set of timers that may tick, or their times, changed.
  virtual void TimersChanged() {}

  /// Fires each timer that is due, once. While work blocks, only those that move pictures.
  bool FireDueTimers();
  std::optional<Milliseconds> TimeToNextTimer() const;
  bool IsHandling() const { return depth_ > 0; }

 private:
  friend class Timer;
  void SetBlocked(bool isBlocked);
  void RefuseWhileBlocked() const;
  bool MayTick(const Timer& timer) const;
  bool RunPosted();
  std::function<void()> PopPosted();
  void Started(Timer* timer);
  void Stopped(Timer* timer);

  std::set<Timer*> timers_;
  std::mutex postedMutex_;
  std::deque<std::function<void()>> posted_;
  std::vector<std::shared_ptr<void>> disposed_;
  int depth_ = 0;
  bool isBlocked_ = false;
  std::stop_source stop_;
  int timesBrokenOff_ = 0;
  bool ended_ = false;
};

}  // namespace marovane
