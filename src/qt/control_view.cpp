#include "qt/control_view.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/form.h"
#include "qt/form_view.h"
#include "qt/geometry.h"
#include "qt/key_codes.h"
#include "qt/qt_windows.h"
#include "qt/text_convert.h"

namespace marovane {

namespace {

constexpr const char* kViewProperty = "controlView";

}  // namespace

ControlView::ControlView(FormView& form, Control& control, QWidget& widget)
    : form_(form), control_(control), widget_(widget), hasFixedName_(!widget.accessibleName().isEmpty()) {
  CopyGeometry();
  if (widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.isHidden()) control.Visible = false;
  if (!widget.isEnabled()) control.Enabled = false;
  if (!widget.toolTip().isEmpty()) control.ToolTipText = Utf8(widget.toolTip());
  widget.setMouseTracking(true);
  widget.installEventFilter(this);
  widget.setProperty(kViewProperty, QVariant::fromValue<QObject*>(this));
  FollowCommonProperties();
}

ControlView::~ControlView() { widget_.setProperty(kViewProperty, {}); }

ControlView* ControlView::Of(const QWidget& widget) {
  return dynamic_cast<ControlView*>(widget.property(kViewProperty).value<QObject*>());
}

void ControlView::CopyGeometry() {
  const QRect box = widget_.geometry();
  control_.Left = ToTwips(box.left());
  control_.Top = ToTwips(box.top());
  control_.Width = ToTwips(box.width());
  control_.Height = ToTwips(box.height());
}

void ControlView::FollowCommonProperties() {
  const auto place = [this](int) {
    widget_.setGeometry(ToPixels(control_.Left), ToPixels(control_.Top), ToPixels(control_.Width),
                        ToPixels(control_.Height));
  };
  for (Property<int>* side : {&control_.Left, &control_.Top, &control_.Width, &control_.Height}) {
    Follow(*side, place);
  }
  Follow(control_.Visible, [this](bool visible) { widget_.setVisible(visible); });
  Follow(control_.Enabled, [this](bool enabled) { widget_.setEnabled(enabled); });
  Follow(control_.HandCursor,
         [this](bool hand) { widget_.setCursor(hand ? Qt::PointingHandCursor : Qt::ArrowCursor); });
  Follow(control_.ToolTipText, [this](const std::string& text) {
    widget_.setToolTip(Text(text));
    ShowName();
  });
  Follow(control_.Description,
         [this](const std::string& text) { widget_.setAccessibleDescription(Text(text)); });
  widget_.setVisible(control_.Visible);
  widget_.setEnabled(control_.Enabled);
}

// A name for screen readers: the one drawn with the window wins, then the tool tip.
void ControlView::ShowName() {
  if (!hasFixedName_ && !control_.ToolTipText().empty())
    widget_.setAccessibleName(Text(control_.ToolTipText));
}

void ControlView::Ready() {
  ShowName();
  if (MakesClicks() && control_.Click.HasHandler()) widget_.setFocusPolicy(Qt::TabFocus);
}

void ControlView::FromWidget(const std::function<void()>& change) {
  if (form_.IsDetached()) return;
  const bool before = fromWidget_;
  fromWidget_ = true;
  change();
  fromWidget_ = before;
}

void ControlView::Raise(const std::function<void()>& act) { form_.Raise(act); }

void ControlView::ClickIt() {
  Raise([this] {
    form_.RefreshPages();
    control_.MouseDown.Raise(kLeftButton);
    control_.MouseUp.Raise(kLeftButton);
    control_.Click.Raise();
  });
}

bool ControlView::CanBePressed() const {
  return MakesClicks() && (control_.Click.HasHandler() || control_.MouseUp.HasHandler());
}

void ControlView::Press() {
  if (!form_.IsDetached() && IsStopButton()) form_.Windows().Loop().BreakOff();
  const auto click = [this] {
    if (!form_.IsDetached() && control_.AcceptsInput()) ClickIt();
  };
  QMetaObject::invokeMethod(
      this, [this, click] { form_.Windows().Loop().Enter(this, click); }, Qt::QueuedConnection);
}

bool ControlView::IsClickKey(int key) const {
  return MakesClicks() && control_.Click.HasHandler() &&
         (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter);
}

bool ControlView::eventFilter(QObject* watched, QEvent* event) {
  if (watched != &widget_ || form_.IsDetached()) return false;
  if (Handle(event)) return true;
  switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
      return HandleMouse(static_cast<QMouseEvent*>(event));
    case QEvent::KeyPress:
      return HandleKey(static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      if (MakesClicks()) widget_.update();
      return false;
    default:
      return false;
  }
}

bool ControlView::HandleMouse(QMouseEvent* event) {
  const int button = event->button() == Qt::RightButton ? kRightButton : kLeftButton;
  const bool isInside = widget_.rect().contains(event->position().toPoint());
  switch (event->type()) {
    case QEvent::MouseMove:
      Raise([this] { control_.MouseMove.Raise(); });
      break;
    case QEvent::MouseButtonDblClick:
      break;  // it replaces the second press; the release after it makes the second click
    case QEvent::MouseButtonPress:
      Raise([this, button] { control_.MouseDown.Raise(button); });
      break;
    default:
      Raise([this, button, clicks = MakesClicks() && isInside && button == kLeftButton] {
        if (clicks) form_.RefreshPages();
        control_.MouseUp.Raise(button);
        if (clicks && control_.Enabled && !form_.IsDetached()) control_.Click.Raise();
      });
  }
  return MakesClicks();
}

bool ControlView::HandleKey(QKeyEvent* event) {
  if (IsClickKey(event->key())) {
    ClickIt();
    return true;
  }
  if (SwallowsKey(*event)) return true;
  const bool isTyped = event->text().size() == 1 && event->text().at(0).isPrint() &&
                       (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
  return isTyped && PassOn(event);
}

ControlView* ControlView::TypingTarget() const {
  const QByteArray name = widget_.property("typeInto").toByteArray();
  if (name.isEmpty()) return nullptr;
  Control* const target = form_.Model().Find(name.toStdString());
  return target == nullptr || !target->AcceptsInput() ? nullptr : form_.Find(*target);
}

bool ControlView::PassOn(QKeyEvent* event) {
  ControlView* const target = TypingTarget();
  if (target == nullptr) return false;
  target->Model().SetFocus();
  QCoreApplication::sendEvent(&target->Widget(), event);
  return true;
}

bool ControlView::SwallowsKey(const QKeyEvent& event) {
  int code = KeyCodeOf(event);
  if (code == 0) return false;
  Raise([this, &code] { control_.KeyDown.Raise(code); });
  return code == 0 || form_.IsDetached();
}

}  // namespace marovane
