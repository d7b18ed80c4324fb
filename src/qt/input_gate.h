// Keeps what the learner types and clicks during a request, for after it; and hears who wants to break off.
#pragma once

#include <QObject>

namespace marovane {

class QtLoop;

/// Filters the input of the whole application as it comes from the window system. While work blocks, and as
/// long as something kept is still to be handed over, keys, clicks and composed text wait for the loop, in
/// their order. Escape, and a press of a stop button by the mouse or a key, ask the loop to break off at
/// once; the press is kept as well. A dialog of the toolkit, which runs a loop of its own, does not wait.
class InputGate : public QObject {
 public:
  explicit InputGate(QtLoop& loop);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Keep(QObject& target, const QEvent& event);
  void HandOver(QObject* target, QEvent& event);

  QtLoop& loop_;
  const QEvent* handedOver_ = nullptr;
  int kept_ = 0;
};

}  // namespace marovane
