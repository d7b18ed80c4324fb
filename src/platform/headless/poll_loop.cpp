#include "platform/headless/poll_loop.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "base/day.h"

namespace marovane {

PollLoop::PollLoop() : wakeFd_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (wakeFd_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

PollLoop::~PollLoop() { close(wakeFd_); }

int PollLoop::WatchReadable(int fd, std::function<void()> callback) {
  return watches_.Add(fd, std::move(callback));
}

void PollLoop::Wake() { eventfd_write(wakeFd_, 1); }

void PollLoop::Pump(std::optional<Milliseconds> atMost) {
  const auto ready = watches_.Wait(atMost, wakeFd_);
  eventfd_t ignored = 0;
  eventfd_read(wakeFd_, &ignored);
  for (const int watch : ready) {
    if (const auto callback = watches_.Find(watch)) RunHandler(callback);
  }
}

base::LocalTime PollLoop::Now() const { return base::LocalNow(); }

EventLoop::Milliseconds PollLoop::Elapsed() const {
  return std::chrono::ceil<Milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace marovane
