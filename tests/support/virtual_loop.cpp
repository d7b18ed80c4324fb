#include "tests/support/virtual_loop.h"

#include <stdexcept>

namespace marovane {

namespace {

constexpr std::chrono::hours kLongestRun{24};  // of all waits together

// How long another process may really take to say something while nothing else is left to wait for.
constexpr std::chrono::seconds kRealPatience{30};

}  // namespace

base::LocalTime VirtualLoop::Now() const {
  return wallAtStart_ + std::chrono::floor<std::chrono::seconds>(elapsed_);
}

void VirtualLoop::Advance(Milliseconds time) {
  elapsed_ += time;
  if (IsBlocked()) FireDueTimers();
}

int VirtualLoop::WatchReadable(int fd, std::function<void()> callback) {
  return watches_.Add(fd, std::move(callback));
}

bool VirtualLoop::RunReady(Milliseconds realTime) {
  const auto ready = watches_.Wait(realTime);
  for (const int watch : ready) {
    if (const auto callback = watches_.Find(watch)) RunHandler(callback);
  }
  return !ready.empty();
}

void VirtualLoop::Pump(std::optional<Milliseconds> atMost) {
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

}  // namespace marovane
