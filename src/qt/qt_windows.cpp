#include "qt/qt_windows.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>

#include "platform/form.h"
#include "platform/run_time_error.h"
#include "qt/geometry.h"
#include "qt/text_convert.h"

namespace marovane {

namespace {

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
  connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive) ApplicationActivated();
  });
}

QtWindows::~QtWindows() {
  qApp->disconnect(this);  // windows that go move the focus
  for (auto& [form, view] : std::exchange(views_, {})) Retire(std::move(view));
  loop_.DeleteRetired();
}

void QtWindows::Retire(std::unique_ptr<FormView> view) {
  view->Detach();
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
  shownAt_[&form] = loop_.Elapsed();
  if (!view->IsPopup()) WindowSystem::Shown(form, isModal);
}

void QtWindows::Hidden(Form& form) {
  WindowSystem::Hidden(form);
  ActivateLastOf(form);
}

void QtWindows::Unloaded(Form& form) {
  WindowSystem::Unloaded(form);
  ActivateLastOf(form);
}

void QtWindows::Forget(const Form& form) {
  WindowSystem::Forget(form);
  auto view = views_.extract(&form);
  if (view.empty()) return;
  Retire(std::move(view.mapped()));
  std::erase(recent_, &form);
  if (wanted_ == &form) wanted_ = nullptr;
  shownAt_.erase(&form);
}

// Where no window manager does it, the window that was active before becomes so again.
void QtWindows::ActivateLastOf(const Form& gone) {
  if (QGuiApplication::focusWindow() != nullptr &&
      FindByWindow(QGuiApplication::focusWindow()) != Find(gone)) {
    return;
  }
  for (auto it = recent_.rbegin(); it != recent_.rend(); ++it) {
    FormView* const view = *it == &gone ? nullptr : Find(**it);
    if (view == nullptr || !view->Frame().isVisible() || !AcceptsInput(view->Model())) continue;
    view->Frame().activateWindow();
    return;
  }
}

void QtWindows::BringToFront(Form& form) {
  if (FormView* const view = Find(form)) view->Frame().raise();
  WindowSystem::BringToFront(form);
}

void QtWindows::Activate(Form& form) {
  FormView* const view = Find(form);
  if (view != nullptr && view->Frame().isVisible()) {
    view->Frame().raise();
    view->Frame().activateWindow();
  }
  std::erase(recent_, &form);
  recent_.push_back(&form);
  wanted_ = &form;
  WindowSystem::Activate(form);
}

void QtWindows::RequestFocus(Control& control) {
  FormView* const view = Find(control.Owner());
  ControlView* const shown = view == nullptr ? nullptr : view->Find(control);
  if (shown != nullptr) shown->Widget().setFocus(Qt::OtherFocusReason);
  WindowSystem::RequestFocus(control);
}

Area QtWindows::Screen() const {
  const QRect usable = QGuiApplication::primaryScreen()->availableGeometry();
  return {ToTwips(usable.left()), ToTwips(usable.top()), ToTwips(usable.width()), ToTwips(usable.height())};
}

Point QtWindows::Cursor() const {
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
  if (AcceptsInput(view->Model())) return false;
  FormView* const modal = TopModal() == nullptr ? nullptr : Find(*TopModal());
  if (event->type() == QEvent::MouseButtonPress && modal != nullptr) {
    modal->Frame().raise();
    modal->Frame().activateWindow();
  }
  return true;
}

void QtWindows::FocusMoved(QWidget* now) {
  FormView* const view = FindByWidget(now);
  if (view == nullptr || view->IsPopup()) return;  // a menu leaves the focus where it is
  ControlView* const control = view->Find(now);
  loop_.Enter(view, [this, view, control] {
    if (!view->IsDetached()) FocusChanged(control == nullptr ? nullptr : &control->Model());
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
  std::erase(recent_, &view->Model());
  recent_.push_back(&view->Model());
  loop_.Enter(view, [this, view] {
    if (!view->IsDetached()) ActiveChanged(&view->Model());
  });
}

// Whoever comes by pointing at a window wants that one, and a question waits for its answer first.
void QtWindows::ApplicationActivated() {
  const bool pointsAtWindow = FindByWidget(QApplication::widgetAt(QCursor::pos())) != nullptr;
  if (!options_.onActivated || pointsAtWindow || TopModal() != nullptr) return;
  loop_.Enter(this, [this] { loop_.RunHandler(options_.onActivated); });
}

// The focus of a window that was shown a moment ago may come when another one has been called to the front
// since: the latest call counts. A click is the user's own wish.
bool QtWindows::TurnsBackTo(const Form& focused) {
  constexpr EventLoop::Milliseconds kLate{1000};
  const auto shown = shownAt_.find(&focused);
  if (wanted_ == nullptr || wanted_ == &focused || shown == shownAt_.end()) return false;
  if (loop_.Elapsed() - shown->second > kLate) return false;
  FormView* const view = Find(*wanted_);
  if (view == nullptr || !view->Frame().isVisible() || QGuiApplication::mouseButtons() != Qt::NoButton)
    return false;
  view->Frame().activateWindow();
  return true;
}

}  // namespace marovane
