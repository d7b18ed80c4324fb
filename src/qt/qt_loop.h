// The event loop of the desktop: Qt's events, and the program's timers and tasks among them.
#pragma once

#include <QObject>
#include <QTimer>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "platform/event_loop.h"

class QSocketNotifier;

/// Needs a QCoreApplication, and is used in its place: QCoreApplication::exec is never called.
class QtLoop : public EventLoop {
 public:
  QtLoop();
  ~QtLoop() override;

  void RunBlocking(const std::function<void()>& work) override;
  int WatchReadable(int fd, std::function<void()> callback) override;
  void StopWatching(int watch) override;
  base::LocalTime Now() const override;
  Milliseconds Elapsed() const override;

  /// The one way from a Qt callback into handlers. No exception passes Qt: it is kept, and goes on from the
  /// Pump that delivered the event. While a transfer blocks, the act waits until it has ended; it is dropped
  /// when the guard, an object of Qt that it needs, is gone by then.
  void Enter(QObject* guard, const std::function<void()>& act);
  bool IsBlocked() const { return blocked_ > 0; }

 protected:
  void Pump(std::optional<Milliseconds> atMost) override;
  void Wake() override;
  void TimersChanged() override;

 private:
  void Tick();
  void RunGuarded(const std::function<void()>& act);
  void RethrowKept();
  void SetWatching(bool on);

  QObject waker_;
  QTimer timer_;
  std::map<int, std::unique_ptr<QSocketNotifier>> watches_;
  int lastWatch_ = 0;
  int pumps_ = 0;
  int blocked_ = 0;
  std::exception_ptr kept_;
};
