#include "qt/qt_loop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QSocketNotifier>
#include <atomic>
#include <thread>
#include <utility>

#include "base/day.h"
#include "platform/run_time_error.h"

namespace marovane {

QtLoop::QtLoop() {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, [this] { Tick(); });
}

QtLoop::~QtLoop() = default;

void QtLoop::Pump(std::optional<Milliseconds> atMost) {
  constexpr int kDrainTime = 20;  // milliseconds; ends earlier when nothing is left
  if (atMost == Milliseconds{0}) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, kDrainTime);
  } else {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  if (!IsHandling()) DeleteRetired();
  RethrowKept();
}

void QtLoop::Retire(std::unique_ptr<QObject> object) { retired_.push_back(std::move(object)); }

void QtLoop::DeleteRetired() {
  std::exchange(retired_, {}).clear();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtLoop::RethrowKept() {
  if (kept_) std::rethrow_exception(std::exchange(kept_, nullptr));
}

void QtLoop::Wake() { QCoreApplication::postEvent(&waker_, new QEvent(QEvent::User)); }

void QtLoop::TimersChanged() {
  if (const auto wait = TimeToNextTimer()) {
    timer_.start(*wait);
  } else {
    timer_.stop();
  }
}

void QtLoop::Tick() {
  RunGuarded([this] { FireDueTimers(); });
  TimersChanged();
}

void QtLoop::RunGuarded(const std::function<void()>& act) {
  try {
    act();
  } catch (const ProgramEnd&) {
    // Every wait throws it again by itself.
  } catch (...) {
    kept_ = std::current_exception();
  }
}

void QtLoop::Enter(QObject* guard, const std::function<void()>& act) {
  if (IsBlocked()) {
    Post([guard = QPointer<QObject>(guard), act] {
      if (guard) act();
    });
    return;
  }
  const HandlerScope scope(*this);
  RunGuarded(act);
}

void QtLoop::SetWatching(bool on) {
  for (const auto& [number, notifier] : watches_) notifier->setEnabled(on);
}

void QtLoop::Block(const std::function<void()>& work) {
  std::atomic<bool> done = false;
  std::exception_ptr failure;
  std::thread worker([&] {
    try {
      work();
    } catch (...) {
      failure = std::current_exception();
    }
    done = true;
    Wake();
  });
  SetWatching(false);
  while (!done) {
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  }
  worker.join();
  SetWatching(true);
  if (failure) std::rethrow_exception(failure);
  RethrowKept();
}

int QtLoop::WatchReadable(int fd, std::function<void()> callback) {
  auto notifier = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated,
                   [this, guard = notifier.get(), callback = std::move(callback)] {
                     const auto kept = callback;  // the callback may stop this watch
                     Enter(guard, kept);
                   });
  watches_[++lastWatch_] = std::move(notifier);
  return lastWatch_;
}

void QtLoop::StopWatching(int watch) {
  const auto found = watches_.find(watch);
  if (found == watches_.end()) return;
  found->second->setEnabled(false);
  Retire(std::move(found->second));
  watches_.erase(found);
}

base::LocalTime QtLoop::Now() const { return base::LocalNow(); }

EventLoop::Milliseconds QtLoop::Elapsed() const {
  return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace marovane
