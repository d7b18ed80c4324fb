// Shows one form: loads its .ui file, finds the widget of each control by name and binds the two.
#pragma once

#include <QObject>
#include <QStringList>
#include <memory>
#include <vector>

#include "platform/form.h"
#include "qt/control_view.h"
#include "qt/window_frame.h"

namespace marovane {

class QtWindows;

/// Outlives its form until no event of one of its widgets can be on the stack: QtLoop::Retire.
class FormView : public QObject {
 public:
  /// Reads ui/<form name>.ui. Throws RunTimeError when there is none, or none that can be read.
  FormView(QtWindows& windows, Form& form);
  ~FormView() override;

  Form& Model() const { return form_; }
  QtWindows& Windows() const { return windows_; }
  WindowFrame& Frame() const { return *frame_; }
  ControlView* Find(const Control& control) const;
  ControlView* Find(const QWidget* widget) const;
  bool IsPopup() const;
  /// Other windows open clear of it: the strip in which one types.
  bool IsStrip() const;
  /// The visible window on the screen; of the strip with its menu slid out.
  QRect Face() const;
  /// Moves the window there, and makes it lower or narrower if the face is.
  void SetFace(const QRect& face);

  /// Shows the window, also a minimised one. Before the first time it lets the controls get ready and moves
  /// the window into sight.
  void Show();
  /// The form is gone for its program: nothing of this view reaches it any more.
  void Detach();
  bool IsDetached() const { return isDetached_; }
  /// It has been shown at least once.
  bool IsReady() const { return isReady_; }

  /// Escape, Enter: clicks the first control that could be clicked and whose widget has the property
  /// ("escape", or "default" of the toolkit's buttons). True when there was one.
  bool ClickMarked(const char* property);
  /// Runs handlers of the form's model, unless it is gone.
  void Raise(const std::function<void()>& act);
  /// Brings the inputs of the form's pages over before a handler asks for them.
  void RefreshPages();

  /// Controls without a widget, widgets without a control, pictures without a file.
  QStringList Problems() const;

 private:
  void Load();
  void Bind();
  void BindForm();
  void FrameMoved();
  void ApplyGeometry();
  void ReturnIntoSight();
  void ShowOrHide();
  void PointerLeft();
  void CloseWanted();
  bool KeyReached(int key);
  void FocusFirst();

  QtWindows& windows_;
  Form& form_;
  std::unique_ptr<WindowFrame> frame_;
  std::vector<std::unique_ptr<ControlView>> views_;
  std::vector<Subscription> subscriptions_;
  QStringList problems_;
  QSize drawnSize_;  // of the .ui file
  QSize toldSize_;
  bool fromFrame_ = false;
  bool isReturning_ = false;  // back into sight, before long
  bool isReady_ = false;
  bool isDetached_ = false;
};

}  // namespace marovane
