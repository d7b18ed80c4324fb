// The event loop of the desktop: Qt's events, and the program's timers and tasks among them.
#pragma once

#include <QObject>
#include <QTimer>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/event_loop.h"

class QSocketNotifier;

namespace marovane {

/// Needs a QCoreApplication, and is used in its place: QCoreApplication::exec is never called.
class QtLoop : public EventLoop {
 public:
  QtLoop();
  ~QtLoop() override;

  int WatchReadable(int fd, std::function<void()> callback) override;
  void StopWatching(int watch) override;
  base::LocalTime Now() const override;
  Milliseconds Elapsed() const override;

  /// The one way from a Qt callback into handlers. No exception passes Qt: it is kept, and goes on from the
  /// Pump that delivered the event. While a transfer blocks, the act waits until it has ended; it is dropped
  /// when the guard, an object of Qt that it needs, is gone by then.
  void Enter(QObject* guard, const std::function<void()>& act);

  /// Deletes an object of Qt once no handler is running and none of its events can be on the stack.
  void Retire(std::unique_ptr<QObject> object);
  /// Deletes what has been retired, for whoever knows that its time has come.
  void DeleteRetired();

 protected:
  void Block(const std::function<void()>& work) override;
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
  std::vector<std::unique_ptr<QObject>> retired_;
  int lastWatch_ = 0;
  std::exception_ptr kept_;
};

}  // namespace marovane
