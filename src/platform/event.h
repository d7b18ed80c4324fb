// Events of controls and forms.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace marovane {

/// Whoever raises events. Each event runs as a handler of the event loop of its form.
class EventSource {
 public:
  virtual ~EventSource() = default;
  virtual void RunEvent(const std::function<void()>& handler) = 0;
};

/// An event with at most one handler, which a controller assigns. Raise is for those who act from outside: a
/// view, a test, the terminal. A controller that wants the same procedure calls the procedure.
template <class... Arguments>
class Event {
 public:
  explicit Event(EventSource& source) : source_(source) {}
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  template <class Handler>
  Event& operator=(Handler handler) {
    handler_ = std::move(handler);
    return *this;
  }
  bool HasHandler() const { return static_cast<bool>(handler_); }

  void Raise(Arguments... arguments) {
    if (!handler_) return;
    source_.RunEvent([&] { handler_(arguments...); });
  }

 private:
  EventSource& source_;
  std::function<void(Arguments...)> handler_;
};

}  // namespace marovane
