#include "platform/event_loop.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "platform/run_time_error.h"
#include "platform/timer.h"

void EventLoop::DoEvents() {
  if (ended_) throw ProgramEnd{};
  Pump(Milliseconds{0});
  RunPosted();
  FireDueTimers();
  if (ended_) throw ProgramEnd{};
}

void EventLoop::WaitUntil(const std::function<bool()>& isMet) {
  while (true) {
    if (ended_) throw ProgramEnd{};
    if (isMet()) return;
    if (RunPosted() || FireDueTimers()) continue;
    Pump(TimeToNextTimer());
  }
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

void EventLoop::RunHandler(const std::function<void()>& handler) {
  const HandlerScope scope(*this);
  try {
    handler();
  } catch (const std::exception& error) {
    if (!onUnhandledError) throw;
    onUnhandledError(error);
  }
}

EventLoop::HandlerScope::~HandlerScope() {
  if (--loop_.depth_ == 0) std::exchange(loop_.disposed_, {}).clear();
}

void EventLoop::DisposeLater(std::shared_ptr<void> object) {
  if (depth_ > 0) disposed_.push_back(std::move(object));
}

bool EventLoop::RunPosted() {
  std::vector<std::function<void()>> tasks;
  {
    const std::lock_guard lock(postedMutex_);
    tasks.swap(posted_);
  }
  for (const auto& task : tasks) RunHandler(task);
  return !tasks.empty();
}

bool EventLoop::FireDueTimers(bool visualOnly) {
  const auto now = Elapsed();
  std::vector<Timer*> due;
  for (Timer* timer : timers_) {
    if (timer->due_ <= now && (timer->isVisual_ || !visualOnly)) due.push_back(timer);
  }
  // Earlier first; a handler may stop or destroy a timer that is still in the list.
  std::stable_sort(due.begin(), due.end(), [](const Timer* a, const Timer* b) { return a->due_ < b->due_; });
  for (Timer* timer : due) {
    if (!timers_.contains(timer) || timer->due_ > now) continue;
    timer->due_ = now + timer->IntervalTime();
    TimersChanged();
    RunHandler([timer] { timer->Tick(); });
  }
  return !due.empty();
}

std::optional<EventLoop::Milliseconds> EventLoop::TimeToNextTimer(bool visualOnly) const {
  std::optional<Milliseconds> wait;
  const auto now = Elapsed();
  for (const Timer* timer : timers_) {
    if (visualOnly && !timer->isVisual_) continue;
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
