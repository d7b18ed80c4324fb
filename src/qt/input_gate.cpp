#include "qt/input_gate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWheelEvent>
#include <QWidget>
#include <functional>
#include <memory>
#include <utility>

#include "qt/control_view.h"
#include "qt/qt_loop.h"

namespace marovane {

namespace {

enum class Kind { kNone, kKept, kDropped };

// Where the window system hands events over: the rest of the way is Qt's own.
Kind KindOf(const QObject& watched, QEvent::Type type) {
  // Composed text goes to the widget straight away.
  if (type == QEvent::InputMethod) return Kind::kKept;
  if (!watched.isWindowType()) return Kind::kNone;
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
      return Kind::kKept;
    case QEvent::MouseMove:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return Kind::kDropped;
    default:
      return Kind::kNone;
  }
}

bool IsEscape(const QEvent& event) {
  return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

bool IsStopButton(const QWidget* widget) {
  const ControlView* const view = widget == nullptr ? nullptr : ControlView::Of(*widget);
  return view != nullptr && view->IsStopButton();
}

// By the mouse or by a key, as every other button.
bool PressesStopButton(const QEvent& event) {
  if (event.type() == QEvent::MouseButtonRelease) {
    const auto& click = static_cast<const QMouseEvent&>(event);
    return click.button() == Qt::LeftButton &&
           IsStopButton(QApplication::widgetAt(click.globalPosition().toPoint()));
  }
  const QWidget* const target = QApplication::focusWidget();
  return event.type() == QEvent::KeyPress && IsStopButton(target) &&
         ControlView::Of(*target)->IsClickKey(static_cast<const QKeyEvent&>(event).key());
}

// What makes an event as it came. The toolkit has one place for all events of a mouse, which moves on with
// it.
std::function<std::unique_ptr<QEvent>()> MakerOf(const QEvent& event) {
  if (const auto* mouse = dynamic_cast<const QMouseEvent*>(&event)) {
    return [type = mouse->type(), local = mouse->position(), scene = mouse->scenePosition(),
            global = mouse->globalPosition(), button = mouse->button(), buttons = mouse->buttons(),
            modifiers = mouse->modifiers()] {
      return std::make_unique<QMouseEvent>(type, local, scene, global, button, buttons, modifiers);
    };
  }
  if (const auto* wheel = dynamic_cast<const QWheelEvent*>(&event)) {
    return [local = wheel->position(), global = wheel->globalPosition(), pixels = wheel->pixelDelta(),
            angle = wheel->angleDelta(), buttons = wheel->buttons(), modifiers = wheel->modifiers(),
            phase = wheel->phase(), isInverted = wheel->inverted()] {
      return std::make_unique<QWheelEvent>(local, global, pixels, angle, buttons, modifiers, phase,
                                           isInverted);
    };
  }
  return [copy = std::shared_ptr<QEvent>(event.clone())] { return std::unique_ptr<QEvent>(copy->clone()); };
}

}  // namespace

InputGate::InputGate(QtLoop& loop) : loop_(loop) { qApp->installEventFilter(this); }

bool InputGate::eventFilter(QObject* watched, QEvent* event) {
  const Kind kind = KindOf(*watched, event->type());
  if (kind == Kind::kNone || event == handedOver_) return false;
  const bool isBlocked = loop_.IsBlocked();
  if (IsEscape(*event)) {
    loop_.BreakOff();
    if (isBlocked) return true;  // it has ended the request, and shall not close the window beside
  }
  if (PressesStopButton(*event)) loop_.BreakOff();
  if (!isBlocked && (kept_ == 0 || QApplication::activeModalWidget() != nullptr)) return false;
  return kind == Kind::kDropped || Keep(*watched, *event);
}

bool InputGate::Keep(QObject& target, const QEvent& event) {
  ++kept_;
  loop_.Post([gate = QPointer<InputGate>(this), target = QPointer<QObject>(&target), make = MakerOf(event)] {
    if (gate) gate->HandOver(target, *make());
  });
  return true;
}

void InputGate::HandOver(QObject* target, QEvent& event) {
  --kept_;
  if (target == nullptr) return;
  const QEvent* const before = std::exchange(handedOver_, &event);
  QCoreApplication::sendEvent(target, &event);
  handedOver_ = before;
}

}  // namespace marovane
