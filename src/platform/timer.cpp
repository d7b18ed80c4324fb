#include "platform/timer.h"

namespace marovane {

Timer::Timer(EventLoop& loop, int interval, Kind kind)
    : Interval(interval), loop_(loop), isVisual_(kind == Kind::kVisual) {
  interval_ = Interval.Watch([this](int) { Restart(); });
  enabled_ = Enabled.Watch([this](bool) { Restart(); });
}

Timer::~Timer() { loop_.Stopped(this); }

void Timer::Restart() {
  if (!Enabled || Interval <= 0) {
    loop_.Stopped(this);
    return;
  }
  due_ = loop_.Elapsed() + IntervalTime();
  loop_.Started(this);
}

void Timer::Tick() {
  if (onTick) onTick();
}

}  // namespace marovane
