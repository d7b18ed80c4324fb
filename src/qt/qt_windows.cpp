#include "qt/qt_windows.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <array>

#include "platform/form.h"
#include "platform/run_time_error.h"
#include "qt/browser_view.h"
#include "qt/geometry.h"
#include "qt/placement.h"
#include "qt/text_convert.h"

namespace marovane {

namespace {

// Within this time the keyboard's moves may still answer to what the program did; later they are the
// learner's.
constexpr EventLoop::Milliseconds kLate{1000};

bool IsInput(QEvent::Type type) {
  constexpr std::array kInput{QEvent::MouseButtonPress,
                              QEvent::MouseButtonRelease,
                              QEvent::MouseButtonDblClick,
                              QEvent::MouseMove,
                              QEvent::Wheel,
                              QEvent::KeyPress,
                              QEvent::KeyRelease,
                              QEvent::Shortcut,
                              QEvent::ShortcutOverride,
                              QEvent::InputMethod,
                              QEvent::ContextMenu,
                              QEvent::TouchBegin,
                              QEvent::TouchUpdate,
                              QEvent::TouchEnd,
                              QEvent::DragEnter,
                              QEvent::Drop};
  return std::ranges::find(kInput, type) != kInput.end();
}

// The main screen for a window that is on none.
const QScreen* ScreenOf(const FormView& view) {
  const QScreen* const screen = QGuiApplication::screenAt(view.Face().center());
  return screen == nullptr ? QGuiApplication::primaryScreen() : screen;
}

}  // namespace

QtWindows::QtWindows(QtLoop& loop, Options options)
    : loop_(loop),
      gate_(loop),
      options_(std::move(options)),
      skin_(options_.uiFolder + "/skin"),
      web_(options_.webLibrary) {
  qApp->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { FocusMoved(now); });
  connect(qApp, &QGuiApplication::focusWindowChanged, this,
          [this](QWindow* window) { WindowFocused(window); });
  for (QScreen* screen : QGuiApplication::screens()) FollowScreen(screen);
  connect(qApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) { FollowScreen(screen); });
  connect(qApp, &QGuiApplication::screenRemoved, this, &QtWindows::ScreensChanged, Qt::QueuedConnection);
  // The toolkit itself sends only after it has painted or heard from the screen, so that a fade or a move
  // could wait for the next touch of the mouse.
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &SendToScreen);
}

QtWindows::~QtWindows() {
  qApp->disconnect(this);  // windows that go move the focus
  for (auto& [form, view] : std::exchange(views_, {})) Retire(std::move(view));
  loop_.DeleteRetired();
}

// Hidden at once: a window manager that sees it go later would give the keyboard to a window of its own
// choice.
void QtWindows::Retire(std::unique_ptr<FormView> view) {
  view->Detach();
  view->Frame().hide();
  loop_.Retire(std::move(view));
}

std::unique_ptr<WebPane> QtWindows::MakeWebPane() {
  using Maker = WebPane* (*)();
  const auto make = reinterpret_cast<Maker>(web_.resolve("MakeMarovaneWebPane"));
  if (make == nullptr) throw RunTimeError("no web engine: " + Utf8(web_.errorString()));
  std::unique_ptr<WebPane> pane(make());
  pane->rights = options_.webRights;
  return pane;
}

FormView* QtWindows::Find(const Form& form) const {
  const auto found = views_.find(&form);
  return found == views_.end() ? nullptr : found->second.get();
}

FormView* QtWindows::FindByWidget(const QWidget* widget) const {
  for (const QWidget* w = widget; w != nullptr; w = w->parentWidget()) {
    for (const auto& [form, view] : views_) {
      if (&view->Frame() == w) return view.get();
    }
  }
  return nullptr;
}

FormView* QtWindows::FindByWindow(const QWindow* window) const {
  for (const auto& [form, view] : views_) {
    if (window != nullptr && view->Frame().windowHandle() == window) return view.get();
  }
  return nullptr;
}

void QtWindows::Loaded(Form& form) {
  WindowSystem::Loaded(form);
  views_[&form] = std::make_unique<FormView>(*this, form);
}

void QtWindows::Shown(Form& form, bool isModal) {
  FormView* const view = Find(form);
  if (view == nullptr) return;
  view->Show();
  if (!view->IsPopup()) WindowSystem::Shown(form, isModal);
}

void QtWindows::Forget(const Form& form) {
  WindowSystem::Forget(form);
  auto view = views_.extract(&form);
  if (view.empty()) return;
  Retire(std::move(view.mapped()));
  std::erase(recent_, &form);
  if (wanted_ == &form) wanted_ = nullptr;
  if (heir_ == &form) heir_ = nullptr;
  appearances_.erase(&form);
  shownAt_.erase(&form);
}

// The window that was active before becomes so again, at once: a window manager that sees the window with the
// keyboard go gives it to one of its own choice, also of another program, or to none, and a busy one may have
// been asked for it and not have done so yet. It is asked once more when it has chosen all the same; not
// later, when the learner may have gone elsewhere.
void QtWindows::PassFocusOn(FormView& from) {
  constexpr int kChoiceMade = 150;  // milliseconds
  const QWindow* const focused = QGuiApplication::focusWindow();
  const bool hasFocus = focused == from.Frame().windowHandle();
  const bool getsFocus = focused != nullptr && wanted_ == &from.Model();
  if (!from.Frame().isVisible() || !(hasFocus || getsFocus)) return;
  EndModal(from.Model());
  FormView* const heir = LastActive(from.Model());
  if (heir == nullptr) return;
  heir_ = &heir->Model();
  wanted_ = &heir->Model();
  handedOnAt_ = loop_.Elapsed();
  heir->Frame().TakeKeyboard();
  QTimer::singleShot(kChoiceMade, heir, [this, heir, hidden = loop_.Elapsed()] {
    if (heir->IsDetached() || wanted_ != &heir->Model() || !heir->Frame().isVisible()) return;
    const bool isActive = QGuiApplication::focusWindow() == heir->Frame().windowHandle();
    if (isActive || loop_.Elapsed() - hidden > kLate || !AcceptsInput(heir->Model())) return;
    heir->Frame().activateWindow();
  });
}

FormView* QtWindows::LastActive(const Form& butFor) const {
  for (auto it = recent_.rbegin(); it != recent_.rend(); ++it) {
    FormView* const view = *it == &butFor ? nullptr : Find(**it);
    if (view == nullptr || !view->Frame().isVisible() || view->Frame().isMinimized()) continue;
    if (AcceptsInput(view->Model())) return view;
  }
  return nullptr;
}

void QtWindows::BringToFront(Form& form) {
  if (FormView* const view = Find(form)) view->Frame().raise();
  WindowSystem::BringToFront(form);
}

void QtWindows::Activate(Form& form) {
  FormView* const view = Find(form);
  if (view != nullptr && view->Frame().isVisible()) {
    view->Frame().raise();
    if (!ProgramPlacesWindows()) Reappear(*view);
  }
  std::erase(recent_, &form);
  recent_.push_back(&form);
  wanted_ = &form;
  QMetaObject::invokeMethod(
      this, [this] { GiveKeyboard(); }, Qt::QueuedConnection);
  WindowSystem::Activate(form);
}

// Of several windows that are called to the front in a row the last one alone gets the keyboard: what is
// typed in between would go to the others.
void QtWindows::GiveKeyboard() {
  FormView* const view = wanted_ == nullptr ? nullptr : Find(*wanted_);
  if (view == nullptr || !view->Frame().isVisible()) return;
  if (QApplication::activeModalWidget() != nullptr) return;  // a dialog of the toolkit's own
  view->Frame().activateWindow();
}

void QtWindows::Appears(FormView& view) {
  appearances_[&view.Model()] = ++lastAppearance_;
  shownAt_[&view.Model()] = loop_.Elapsed();
  if (!view.Frame().IsDialog()) return;
  FormView* const owner = LastActive(view.Model());
  view.Frame().SetOwner(owner == nullptr ? nullptr : &owner->Frame());
}

bool QtWindows::IsCovered(const FormView& view) const {
  const auto own = appearances_.find(&view.Model());
  return std::ranges::any_of(views_, [&](const auto& other) {
    const auto appearance = appearances_.find(other.first);
    return appearance != appearances_.end() && own != appearances_.end() &&
           appearance->second > own->second && other.second->Frame().isVisible() && !other.second->IsPopup();
  });
}

// A Wayland compositor puts a window in front of others only when it appears.
void QtWindows::Reappear(FormView& view) {
  if (!IsCovered(view) || view.Frame().isActiveWindow()) return;
  view.Frame().hide();
  Appears(view);
  view.Frame().show();
}

void QtWindows::RequestFocus(Control& control) {
  FormView* const view = Find(control.Owner());
  ControlView* const shown = view == nullptr ? nullptr : view->Find(control);
  if (shown != nullptr) shown->Widget().setFocus(Qt::OtherFocusReason);
  WindowSystem::RequestFocus(control);
}

Area QtWindows::Screen() const {
  const QRect usable = UsableArea();
  return {ToTwips(usable.left()), ToTwips(usable.top()), ToTwips(usable.width()), ToTwips(usable.height())};
}

FormView* QtWindows::Strip() const {
  for (const auto& [form, view] : views_) {
    if (view->IsStrip() && view->IsReady()) return view.get();
  }
  return nullptr;
}

// Of the screen on which the strip is, or was before it moved out of sight.
QRect QtWindows::UsableArea() const {
  const FormView* const strip = Strip();
  return (strip == nullptr ? QGuiApplication::primaryScreen() : ScreenOf(*strip))->availableGeometry();
}

void QtWindows::KeepInSight(FormView& view) { KeepWithin(view, UsableArea()); }

void QtWindows::KeepWithin(FormView& view, const QRect& usable) const {
  if (view.IsPopup()) return;  // it opens at the pointer
  const FormView* const strip = Strip();
  // A dialog is in front of the strip, or moves it away.
  const bool mayCover = strip == nullptr || strip == &view || view.Frame().IsDialog();
  const QRect taken = mayCover ? QRect() : strip->Face();
  view.SetFace(PlaceInSight(view.Face(), usable, taken, view.Frame().IsResizable()));
}

void QtWindows::FollowScreen(QScreen* screen) {
  connect(screen, &QScreen::availableGeometryChanged, this, &QtWindows::ScreensChanged, Qt::QueuedConnection);
}

// A screen is gone or has another size, or a panel has come up.
void QtWindows::ScreensChanged() {
  FormView* const strip = Strip();
  if (strip != nullptr && strip->Frame().isVisible()) KeepInSight(*strip);
  for (const auto& [form, view] : views_) {
    const QRect face = view->Face();
    if (!view->Frame().isVisible() || IsOnScreen(face)) continue;
    KeepWithin(*view, IsWithinReach(face) ? ScreenOf(*view)->availableGeometry() : UsableArea());
  }
}

// On Wayland nobody knows where the pointer is while it is over other programs.
Point QtWindows::Cursor() const {
  constexpr Point kFarAway{-30000, -30000};
  const bool isOurs =
      std::ranges::any_of(views_, [](const auto& v) { return v.second->Frame().underMouse(); });
  if (!ProgramPlacesWindows() && !isOurs) return kFarAway;
  const QPoint mouse = QCursor::pos();
  return {ToTwips(mouse.x()), ToTwips(mouse.y())};
}

void QtWindows::StartDrag(Form& form) {
  if (FormView* const view = Find(form)) view->Frame().StartDrag();
}

void QtWindows::SystemBox(const std::string& title, const std::string& text) {
  QMessageBox box(QMessageBox::Warning, Text(title), Text(text), QMessageBox::Ok);
  box.exec();
}

void QtWindows::SendKeys(const std::string& keys) {
  QWidget* const target = QApplication::focusWidget();
  if (target == nullptr || (keys != "{UP}" && keys != "{DOWN}")) return;
  const int key = keys == "{UP}" ? Qt::Key_Up : Qt::Key_Down;
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
  QCoreApplication::sendEvent(target, &press);
  QCoreApplication::sendEvent(target, &release);
}

// A modal form in front, or a form that is not enabled: its window accepts no input, but looks as ever.
bool QtWindows::eventFilter(QObject* watched, QEvent* event) {
  if (!IsInput(event->type()) || !watched->isWidgetType()) return false;
  FormView* const view = FindByWidget(static_cast<QWidget*>(watched));
  if (view == nullptr) return false;
  // A click is the user's own choice of a window, and no late request for another one counts.
  if (event->type() == QEvent::MouseButtonPress && wanted_ != &view->Model()) wanted_ = nullptr;
  auto& widget = static_cast<QWidget&>(*watched);
  if (event->type() == QEvent::InputMethod && IsComposedIn(*view, widget)) return false;
  if (AcceptsInput(view->Model())) return LeavePage(*view, widget, *event);
  FormView* const modal = TopModal() == nullptr ? nullptr : Find(*TopModal());
  if (event->type() == QEvent::MouseButtonPress && modal != nullptr) {
    modal->Frame().raise();
    modal->Frame().activateWindow();
  }
  return true;
}

// The input method and the widget have to agree on how a composition ends, also behind a question.
bool QtWindows::IsComposedIn(const FormView& view, const QWidget& widget) {
  const ControlView* const control = view.Find(&widget);
  return control != nullptr && control->IsComposing();
}

// A page keeps Escape to itself, though it has no use for it.
bool QtWindows::LeavePage(FormView& view, const QWidget& widget, const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  if (static_cast<const QKeyEvent&>(event).key() != Qt::Key_Escape) return false;
  return dynamic_cast<BrowserView*>(view.Find(&widget)) != nullptr && view.ClickMarked("escape");
}

void QtWindows::FocusMoved(QWidget* now) {
  FormView* const view = FindByWidget(now);
  if (view == nullptr || view->IsPopup()) return;  // a menu leaves the focus where it is
  ControlView* const control = view->Find(now);
  loop_.Enter(view, [this, view, control] {
    if (!view->IsDetached()) FocusChanged(control == nullptr ? nullptr : &control->Model());
  });
}

void QtWindows::CountAsFocused(Control& control) {
  FormView* const view = Find(control.Owner());
  if (view == nullptr) return;
  loop_.Enter(view, [this, view, &control] {
    if (!view->IsDetached()) FocusChanged(&control);
  });
}

void QtWindows::WindowFocused(QWindow* window) {
  FormView* const view = FindByWindow(window);
  if (view == nullptr) {
    // A window of the toolkit's own, such as a list that drops down, belongs to the form that opened it.
    if (window == nullptr) loop_.Enter(this, [this] { ActiveChanged(nullptr); });
    return;
  }
  if (view->IsPopup() || TurnsBackTo(view->Model())) return;
  // One that only stands in for a window that was hidden is no choice of the user's: that window comes back.
  if (std::exchange(heir_, nullptr) != &view->Model()) {
    std::erase(recent_, &view->Model());
    recent_.push_back(&view->Model());
  }
  loop_.Enter(view, [this, view] {
    if (!view->IsDetached()) ActiveChanged(&view->Model());
  });
}

// The focus of a window that was shown a moment ago may come when another one has been called to the front
// since, and a busy window manager may choose one long after the program has handed the keyboard on: the
// latest call counts. A click, or a second turn to that window, is the learner's own wish.
bool QtWindows::TurnsBackTo(const Form& focused) {
  if (wanted_ == nullptr || wanted_ == &focused) return false;
  if (!ProgramPlacesWindows()) return false;  // nor would it get the focus
  const auto isFresh = [this](EventLoop::Milliseconds since) { return loop_.Elapsed() - since <= kLate; };
  const auto shown = shownAt_.find(&focused);
  const bool isShown = shown != shownAt_.end() && isFresh(shown->second);
  const bool isHandedOn = handedOnAt_ && isFresh(*handedOnAt_);
  if (!isShown && !isHandedOn) return false;
  FormView* const view = Find(*wanted_);
  if (view == nullptr || !view->Frame().isVisible() || IsMouseHeld()) return false;
  if (isShown) {
    shownAt_.erase(shown);
  } else {
    handedOnAt_.reset();
    heir_ = wanted_;
  }
  view->Frame().activateWindow();
  return true;
}

}  // namespace marovane
