#include "qt/form_view.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QCoreApplication>
#include <QFile>
#include <QPushButton>
#include <QUiLoader>
#include <QWindow>
#include <utility>

#include "platform/run_time_error.h"
#include "qt/browser_view.h"
#include "qt/geometry.h"
#include "qt/placement.h"
#include "qt/qt_windows.h"
#include "qt/text_convert.h"

namespace marovane {

namespace {

constexpr int kOffScreen = -10000;  // twips; windows that have to vanish for a while move beyond

// The loader takes in every designer plugin that it finds, among them one that brings the whole web engine
// with it. We need none, so it is made while there is nowhere to look.
std::unique_ptr<QUiLoader> MakeLoader() {
  const QStringList paths = QCoreApplication::libraryPaths();
  QCoreApplication::setLibraryPaths({});
  auto loader = std::make_unique<QUiLoader>();
  QCoreApplication::setLibraryPaths(paths);
  return loader;
}

// The window of a file; the caller owns it.
QWidget* LoadUi(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw RunTimeError("no window file " + Utf8(path));
  const auto loader = MakeLoader();
  QWidget* const window = loader->load(&file);
  if (window == nullptr) throw RunTimeError(Utf8(path + ": " + loader->errorString()));
  return window;
}

// Widgets that hold other widgets of the .ui file; all others are whole in themselves.
bool IsContainer(const QWidget& widget) {
  return qobject_cast<const QAbstractScrollArea*>(&widget) == nullptr && widget.layout() == nullptr;
}

// What the toolkit has told of a widget before it was known what it shows is told anew.
void TellAnew(QWidget& widget) {
  QAccessible::deleteAccessibleInterface(
      QAccessible::uniqueId(QAccessible::queryAccessibleInterface(&widget)));
}

template <class Visit>
void ForEachWidget(const QWidget& parent, const Visit& visit) {
  for (QObject* child : parent.children()) {
    auto* const widget = qobject_cast<QWidget*>(child);
    if (widget == nullptr || widget->isWindow()) continue;
    visit(*widget);
    if (IsContainer(*widget)) ForEachWidget(*widget, visit);
  }
}

}  // namespace

FormView::FormView(QtWindows& windows, Form& form)
    : windows_(windows), form_(form), frame_(std::make_unique<WindowFrame>()) {
  Load();
  Bind();
  BindForm();
}

FormView::~FormView() { views_.clear(); }

void FormView::Load() {
  const QString path = windows_.UiFolder() + "/" + Text(form_.Name()) + ".ui";
  QWidget* const content = LoadUi(path);
  content->setObjectName(Text(form_.Name()));
  frame_->setObjectName("frame");
  frame_->setWindowTitle(content->windowTitle());
  frame_->setAccessibleName(content->accessibleName());  // for a window without a title
  frame_->SetContent(content);
  TellAnew(*content);
}

void FormView::Bind() {
  for (Control* control : form_.Controls()) {
    auto* const widget = frame_->Content()->findChild<QWidget*>(Text(control->Name()));
    auto view = widget == nullptr ? nullptr : MakeControlView(*this, *control, *widget);
    if (view) {
      TellAnew(*widget);
      views_.push_back(std::move(view));
    } else {
      problems_ << Text(control->Name()) + (widget == nullptr ? ": no widget" : ": wrong kind of widget");
    }
  }
  ForEachWidget(*frame_->Content(), [this](QWidget& widget) {
    const bool isNamed = !widget.objectName().isEmpty() && !widget.objectName().startsWith("qt_");
    if (widget.property("decoration").toBool()) {
      widget.setAttribute(Qt::WA_TransparentForMouseEvents);
    } else if (isNamed && form_.Find(Utf8(widget.objectName())) == nullptr) {
      problems_ << widget.objectName() + ": no control";
    }
  });
}

void FormView::BindForm() {
  const QSize size = frame_->Content()->size();
  form_.Width = ToTwips(size.width());
  form_.Height = ToTwips(size.height());
  if (form_.Caption().empty()) form_.Caption = Utf8(frame_->windowTitle());
  frame_->setWindowTitle(Text(form_.Caption));
  drawnSize_ = toldSize_ = size;

  const auto place = [this](int) { ApplyGeometry(); };
  for (Property<int>* side : {&form_.Left, &form_.Top, &form_.Width, &form_.Height}) {
    subscriptions_.push_back(side->Watch(place));
  }
  subscriptions_.push_back(form_.Visible.Watch([this](bool) { ShowOrHide(); }));
  subscriptions_.push_back(
      form_.Caption.Watch([this](const std::string& text) { frame_->setWindowTitle(Text(text)); }));
  subscriptions_.push_back(form_.Alpha.Watch([this](int alpha) { frame_->SetOpacity(alpha / 255.0); }));
  subscriptions_.push_back(form_.TopMost.Watch([this](bool topMost) { frame_->SetTopMost(topMost); }));

  frame_->onMovedOrResized = [this] { FrameMoved(); };
  frame_->onCloseWanted = [this] { Raise([this] { CloseWanted(); }); };
  frame_->onPointerLeft = [this] { PointerLeft(); };
  // The keyboard was lost with the native window. Until the loop goes on nobody has been told.
  frame_->onRenewed = [this] {
    const auto isActive = [this] { return !isDetached_ && windows_.Active() == &form_; };
    if (!isActive()) return;
    const auto takeBack = [this, isActive] {
      if (isActive()) windows_.Activate(form_);
    };
    QMetaObject::invokeMethod(frame_.get(), takeBack, Qt::QueuedConnection);
  };
  frame_->onKey = [this](int key) { return KeyReached(key); };
  frame_->onPopupClosed = [this] {
    Raise([this] {
      if (form_.Visible) form_.Hide();
    });
  };
}

ControlView* FormView::Find(const Control& control) const {
  for (const auto& view : views_) {
    if (&view->Model() == &control) return view.get();
  }
  return nullptr;
}

ControlView* FormView::Find(const QWidget* widget) const {
  for (const QWidget* w = widget; w != nullptr; w = w->parentWidget()) {
    for (const auto& view : views_) {
      if (&view->Widget() == w) return view.get();
    }
  }
  return nullptr;
}

bool FormView::IsPopup() const { return frame_->windowType() == Qt::Popup; }

bool FormView::IsStrip() const { return frame_->Content()->property("strip").toBool(); }

QRect FormView::Face() const {
  const QRect face = frame_->FaceGeometry();
  return IsStrip() ? QRect(face.topLeft(), face.size().expandedTo(drawnSize_)) : face;
}

void FormView::SetFace(const QRect& face) {
  const QRect before = Face();
  if (face == before) return;
  const QRect content = frame_->ContentWithin(face);
  if (face.width() != before.width()) form_.Width = ToTwips(content.width());
  if (face.height() != before.height()) form_.Height = ToTwips(content.height());
  if (face.left() != before.left()) form_.Left = ToTwips(content.left());
  if (face.top() != before.top()) form_.Top = ToTwips(content.top());
}

void FormView::Detach() {
  isDetached_ = true;
  subscriptions_.clear();
  for (const auto& view : views_) view->Detach();
}

void FormView::Show() {
  if (!std::exchange(isReady_, true)) {
    for (const auto& view : views_) view->Ready();
    FocusFirst();
    if (form_.Left > kOffScreen) windows_.KeepInSight(*this);
  }
  if (frame_->isVisible()) frame_->Restore();
  ShowOrHide();
}

// Where the keyboard begins: at the widget drawn so, or at the button that Enter presses.
void FormView::FocusFirst() {
  if (frame_->focusWidget() != nullptr) return;
  for (const char* property : {"initialFocus", "default"}) {
    for (const auto& view : views_) {
      if (!view->Widget().property(property).toBool() || !view->Model().Visible) continue;
      view->Widget().setFocus();
      return;
    }
  }
}

void FormView::ShowOrHide() {
  const bool isShown = form_.Visible && form_.Left > kOffScreen && isReady_;
  if (isShown == frame_->isVisible()) return;
  if (!isShown) windows_.PassFocusOn(*this);
  if (isShown && !IsWithinReach(Face())) windows_.KeepInSight(*this);
  if (isShown) {
    frame_->Restore();
    windows_.Appears(*this);
    // While the program has the keyboard, it alone hands it on, and not the window manager.
    frame_->SetQuiet(!IsPopup() && QGuiApplication::focusWindow() != nullptr);
  }
  frame_->setVisible(isShown);
}

void FormView::ApplyGeometry() {
  if (fromFrame_) return;
  if (form_.Left > kOffScreen) {
    frame_->SetContentGeometry({ToPixels(form_.Left), ToPixels(form_.Top), std::max(1, ToPixels(form_.Width)),
                                std::max(1, ToPixels(form_.Height))});
  }
  ShowOrHide();
  if (frame_->isVisible() && !IsWithinReach(Face())) ReturnIntoSight();
}

// A remembered place may be on a screen that has gone. Its sides are set one after the other, so all of them
// are waited for.
void FormView::ReturnIntoSight() {
  if (std::exchange(isReturning_, true)) return;
  const auto comeBack = [this] {
    isReturning_ = false;
    if (!isDetached_ && frame_->isVisible() && !IsWithinReach(Face())) windows_.KeepInSight(*this);
  };
  const auto enter = [this, comeBack] { windows_.Loop().Enter(this, comeBack); };
  QMetaObject::invokeMethod(this, enter, Qt::QueuedConnection);
}

// The window system or the user moved or resized the window.
void FormView::FrameMoved() {
  if (isDetached_) return;
  const QRect face = frame_->ContentGeometry();
  if (form_.Left > kOffScreen && frame_->isVisible()) {
    fromFrame_ = true;
    // A model that says the same pixel keeps its odd twips.
    if (ToPixels(form_.Left) != face.left()) form_.Left = ToTwips(face.left());
    if (ToPixels(form_.Top) != face.top()) form_.Top = ToTwips(face.top());
    if (ToPixels(form_.Width) != face.width()) form_.Width = ToTwips(face.width());
    if (ToPixels(form_.Height) != face.height()) form_.Height = ToTwips(face.height());
    fromFrame_ = false;
  }
  if (std::exchange(toldSize_, face.size()) != face.size()) Raise([this] { form_.Form_Resize(); });
}

void FormView::Raise(const std::function<void()>& act) {
  windows_.Loop().Enter(this, [this, act] {
    if (!isDetached_) form_.RunEvent(act);
  });
}

// The pointer left the window faster than it could cross the background, where hovered pictures go back to
// normal.
void FormView::PointerLeft() {
  for (const auto& view : views_) {
    if (view->Widget().size() == frame_->Content()->size()) {
      Raise([&view] { view->Model().MouseMove.Raise(); });
      return;
    }
  }
}

void FormView::CloseWanted() {
  if (!form_.AcceptsInput()) return;
  if (form_.QueryClose.HasHandler()) return form_.QueryClose.Raise();
  ClickMarked("escape");
}

bool FormView::KeyReached(int key) {
  if (key == Qt::Key_Escape) return ClickMarked("escape");
  if (key == Qt::Key_Return || key == Qt::Key_Enter) return ClickMarked("default");
  return false;
}

// Of several the last one that can be clicked: a mere notice is left by its one button, a question by the
// button that refuses.
bool FormView::ClickMarked(const char* property) {
  if (isDetached_) return false;
  for (auto view = views_.rbegin(); view != views_.rend(); ++view) {
    if (!(*view)->Widget().property(property).toBool() || !(*view)->Model().AcceptsInput()) continue;
    (*view)->ClickIt();
    return true;
  }
  return false;
}

void FormView::RefreshPages() {
  for (const auto& view : views_) {
    if (auto* const browser = dynamic_cast<BrowserView*>(view.get())) browser->RefreshInputs();
  }
}

QStringList FormView::Problems() const {
  QStringList problems = problems_;
  for (const auto& view : views_) {
    const QString problem = view->Problem();
    if (!problem.isEmpty()) problems << problem;
  }
  return problems;
}

}  // namespace marovane
