// The window system of the desktop: a window for each form.
#pragma once

#include <QLibrary>
#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/window_system.h"
#include "qt/form_view.h"
#include "qt/input_gate.h"
#include "qt/qt_loop.h"
#include "qt/skin.h"
#include "qt/web_pane.h"

class QScreen;
class QWindow;

namespace marovane {

class QtWindows : public QObject, public WindowSystem {
 public:
  struct Options {
    QString uiFolder;    ///< with the .ui files, skin/ and skin/marovane.qss
    QString webLibrary;  ///< path of the library with the web engine
    WebRights webRights;
  };

  /// Needs a QApplication made after PrepareApplication().
  QtWindows(QtLoop& loop, Options options);
  ~QtWindows() override;

  void Loaded(Form& form) override;
  void Shown(Form& form, bool isModal) override;
  using WindowSystem::Forget;
  void Forget(const Form& form) override;
  void BringToFront(Form& form) override;
  void RequestFocus(Control& control) override;
  void Activate(Form& form) override;
  Area Screen() const override;
  Point Cursor() const override;
  void StartDrag(Form& form) override;
  void SystemBox(const std::string& title, const std::string& text) override;
  void SendKeys(const std::string& keys) override;

  QtLoop& Loop() const { return loop_; }
  /// The control counts as the one with the focus, though its widget does not have it yet.
  void CountAsFocused(Control& control);
  Skin& Pictures() { return skin_; }
  const QString& UiFolder() const { return options_.uiFolder; }
  /// A new pane of the web engine, whose library is loaded at the first one. Throws RunTimeError.
  std::unique_ptr<WebPane> MakeWebPane();
  bool HasWebEngine() const { return web_.isLoaded(); }
  /// The view of an open form, nullptr for one that is not open.
  FormView* Find(const Form& form) const;
  /// A window is about to be hidden: if it has the keyboard, the one that was active before gets it.
  void PassFocusOn(FormView& from);
  /// A window is about to be put on the screen.
  void Appears(FormView& view);
  /// True when another window that can be seen, and is no menu, has appeared later. Where programs cannot
  /// stack windows, that one is in front.
  bool IsCovered(const FormView& view) const;
  /// Moves a window to where it can be seen, on the screen with the strip and clear of that.
  void KeepInSight(FormView& view);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Retire(std::unique_ptr<FormView> view);
  static bool IsComposedIn(const FormView& view, const QWidget& widget);
  static bool LeavePage(FormView& view, const QWidget& widget, const QEvent& event);
  FormView* FindByWidget(const QWidget* widget) const;
  FormView* FindByWindow(const QWindow* window) const;
  void FocusMoved(QWidget* now);
  void WindowFocused(QWindow* window);
  FormView* LastActive(const Form& butFor) const;
  void GiveKeyboard();
  void Reappear(FormView& view);
  bool TurnsBackTo(const Form& focused);
  FormView* Strip() const;
  QRect UsableArea() const;
  void KeepWithin(FormView& view, const QRect& usable) const;
  void FollowScreen(QScreen* screen);
  void ScreensChanged();

  QtLoop& loop_;
  InputGate gate_;
  Options options_;
  Skin skin_;
  QLibrary web_;
  std::map<const Form*, std::unique_ptr<FormView>> views_;
  const Form* wanted_ = nullptr;            // called to the front last
  std::map<const Form*, int> appearances_;  // rising numbers, the latest of each form
  int lastAppearance_ = 0;
  std::map<const Form*, EventLoop::Milliseconds> shownAt_;
  std::vector<const Form*> recent_;  // the form that was active last is at the end
  const Form* heir_ = nullptr;       // was asked to take the keyboard over from a window that is hidden
  std::optional<EventLoop::Milliseconds> handedOnAt_;  // when that was asked last
};

}  // namespace marovane
