#include "platform/event_loop.h"

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <utility>

#include "platform/run_time_error.h"
#include "platform/timer.h"

namespace marovane {

void EventLoop::DoEvents() {
  RefuseWhileBlocked();
  if (ended_) throw ProgramEnd{};
  Pump(Milliseconds{0});
  RunPosted();
  FireDueTimers();
  if (ended_) throw ProgramEnd{};
}

void EventLoop::WaitUntil(const std::function<bool()>& isMet) {
  RefuseWhileBlocked();
  bool mayHaveMore = true;
  while (true) {
    if (ended_) throw ProgramEnd{};
    if (isMet()) return;
    // The machine's events get their turn also while timers are always due.
    Pump(mayHaveMore ? Milliseconds{0} : TimeToNextTimer());
    mayHaveMore = RunPosted();
    mayHaveMore = FireDueTimers() || mayHaveMore;
  }
}

bool EventLoop::WaitUntil(const std::function<bool()>& isMet, Milliseconds atMost) {
  const auto end = Elapsed() + atMost;
  Timer alarm(*this, static_cast<int>(atMost.count()));
  alarm.Enabled = true;
  bool met = false;
  WaitUntil([&] {
    met = isMet();
    return met || Elapsed() >= end;
  });
  return met;
}

void EventLoop::Wait(Milliseconds time) {
  WaitUntil([] { return false; }, time);
}

void EventLoop::Run() {
  try {
    WaitUntil([] { return false; });
  } catch (const ProgramEnd&) {
    disposed_.clear();
  }
}

void EventLoop::End() {
  ended_ = true;
  throw ProgramEnd{};
}

void EventLoop::Post(std::function<void()> task) {
  {
    const std::lock_guard lock(postedMutex_);
    posted_.push_back(std::move(task));
  }
  Wake();
}

void EventLoop::RunBlocking(const std::function<void()>& work) {
  RefuseWhileBlocked();
  stop_ = std::stop_source{};
  SetBlocked(true);
  try {
    Block(work);
  } catch (...) {
    SetBlocked(false);
    throw;
  }
  SetBlocked(false);
}

void EventLoop::BreakOff() {
  ++timesBrokenOff_;
  stop_.request_stop();
  Wake();
}

void EventLoop::SetBlocked(bool isBlocked) {
  isBlocked_ = isBlocked;
  TimersChanged();
}

void EventLoop::RefuseWhileBlocked() const {
  if (isBlocked_) throw std::logic_error("a request or a wait inside a request");
}

void EventLoop::RunHandler(const std::function<void()>& handler) {
  const HandlerScope scope(*this);
  const std::function<void()> putRight = onHandler ? onHandler() : nullptr;
  try {
    handler();
  } catch (const std::exception& error) {
    if (!onUnhandledError || isBlocked_) throw;
    if (putRight) putRight();
    onUnhandledError(error);
  }
}

EventLoop::HandlerScope::~HandlerScope() {
  if (--loop_.depth_ == 0) std::exchange(loop_.disposed_, {}).clear();
}

void EventLoop::DisposeLater(std::shared_ptr<void> object) {
  if (depth_ > 0) disposed_.push_back(std::move(object));
}

std::function<void()> EventLoop::PopPosted() {
  const std::lock_guard lock(postedMutex_);
  if (posted_.empty()) return {};
  auto task = std::move(posted_.front());
  posted_.pop_front();
  return task;
}

bool EventLoop::RunPosted() {
  std::size_t count = 0;
  {
    const std::lock_guard lock(postedMutex_);
    count = posted_.size();
  }
  // One by one, so that the rest runs also when one of them waits or throws; no more than were there at
  // first, so that tasks which post tasks leave room for timers.
  for (std::size_t i = 0; i < count; ++i) {
    if (const auto task = PopPosted()) RunHandler(task);
  }
  return count > 0;
}

bool EventLoop::MayTick(const Timer& timer) const { return timer.isVisual_ || !isBlocked_; }

bool EventLoop::FireDueTimers() {
  const auto now = Elapsed();
  std::vector<Timer*> due;
  for (Timer* timer : timers_) {
    if (timer->due_ <= now && MayTick(*timer)) due.push_back(timer);
  }
  // Earlier first; a handler may stop or destroy a timer that is still in the list.
  std::stable_sort(due.begin(), due.end(), [](const Timer* a, const Timer* b) { return a->due_ < b->due_; });
  for (Timer* timer : due) {
    if (!timers_.contains(timer) || timer->due_ > now) continue;
    // In step with the tick before, so that small delays do not add up; unless a whole tick was missed.
    const auto next = timer->due_ + timer->IntervalTime();
    timer->due_ = next > now ? next : now + timer->IntervalTime();
    TimersChanged();
    RunHandler([timer] { timer->Tick(); });
  }
  return !due.empty();
}

std::optional<EventLoop::Milliseconds> EventLoop::TimeToNextTimer() const {
  std::optional<Milliseconds> wait;
  const auto now = Elapsed();
  for (const Timer* timer : timers_) {
    if (!MayTick(*timer)) continue;
    const auto rest = std::max(timer->due_ - now, Milliseconds{0});
    if (!wait || rest < *wait) wait = rest;
  }
  return wait;
}

void EventLoop::Started(Timer* timer) {
  timers_.insert(timer);
  TimersChanged();
}

void EventLoop::Stopped(Timer* timer) {
  if (timers_.erase(timer) > 0) TimersChanged();
}

}  // namespace marovane
