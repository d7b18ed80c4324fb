// A loop on the real clock, for programs without windows.
#pragma once

#include "platform/event_loop.h"
#include "platform/headless/fd_watches.h"

namespace marovane {

class PollLoop : public EventLoop {
 public:
  PollLoop();
  ~PollLoop() override;
  PollLoop(const PollLoop&) = delete;
  PollLoop& operator=(const PollLoop&) = delete;

  int WatchReadable(int fd, std::function<void()> callback) override;
  void StopWatching(int watch) override { watches_.Remove(watch); }
  base::LocalTime Now() const override;
  Milliseconds Elapsed() const override;

 protected:
  void Pump(std::optional<Milliseconds> atMost) override;
  void Wake() override;

 private:
  FdWatches watches_;
  int wakeFd_;
};

}  // namespace marovane
