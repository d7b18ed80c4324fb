// Binds a control model to its widget, both ways. One class a type of control.
#pragma once

#include <QAccessible>
#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "platform/controls.h"

class QKeyEvent;

namespace marovane {

class FormView;

/// What all controls have: geometry, visibility, tool tip, cursor, mouse, keys.
class ControlView : public QObject {
 public:
  ControlView(FormView& form, Control& control, QWidget& widget);
  ~ControlView() override;

  /// The view that a widget has been bound by, null for any other widget.
  static ControlView* Of(const QWidget& widget);

  Control& Model() const { return control_; }
  QWidget& Widget() const { return widget_; }

  /// Called before the form is first shown, when its controller has set its handlers.
  virtual void Ready();
  /// The model is about to go: follows it no longer.
  void Detach() { subscriptions_.clear(); }
  /// Does what a click on it does.
  virtual void ClickIt();

  /// What it is for those who do not see it; NoRole where the toolkit itself knows.
  virtual QAccessible::Role Role() const { return QAccessible::NoRole; }
  /// The text on it, its name where it has no other.
  virtual QString Caption() const { return ""; }
  /// True where it says nothing to those who do not see it.
  virtual bool IsDecoration() const { return false; }
  /// True where it is one of several and the chosen one.
  virtual bool IsChosen() const { return false; }
  virtual bool CanBePressed() const;
  /// True while it shows the button that ends what is going on.
  virtual bool IsStopButton() const { return false; }
  /// The keys that act as a click.
  virtual bool IsClickKey(int key) const;
  /// True while an input method composes a text in it.
  virtual bool IsComposing() const { return false; }
  /// The press of a screen reader, not behind a question: a click that comes when nothing else runs. A stop
  /// button ends what is going on at once.
  void Press();

  /// Anything wrong with how the control is drawn; "" for nothing.
  virtual QString Problem() const { return ""; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// For events that only one type of control handles. True: handled.
  virtual bool Handle(QEvent*) { return false; }
  /// True where the widget itself does nothing with the mouse, so that the view makes the clicks.
  virtual bool MakesClicks() const { return true; }
  /// True: the key goes no further.
  virtual bool HandleKey(QKeyEvent* event);
  /// Raises KeyDown. True when the key goes no further.
  bool SwallowsKey(const QKeyEvent& event);
  /// The view of the control that gets what is typed here, by the widget's property "typeInto", while it
  /// takes input. Null when it is this one.
  ControlView* TypingTarget() const;
  /// Lets the one that gets it have the focus and the key. False when it is this one.
  bool PassOn(QKeyEvent* event);

  /// Has a procedure follow a property, but not while the widget itself is the source of the change.
  template <class T, class Apply>
  void Follow(Property<T>& property, Apply apply) {
    subscriptions_.push_back(property.Watch([this, apply](const T& value) {
      if (!fromWidget_) apply(value);
    }));
  }
  /// Carries a change of the widget over into the model.
  void FromWidget(const std::function<void()>& change);
  /// Runs handlers of the model.
  void Raise(const std::function<void()>& act);

  FormView& form_;

 private:
  void FollowCommonProperties();
  void CopyGeometry();
  bool HandleMouse(QMouseEvent* event);
  void ShowName();

  Control& control_;
  QWidget& widget_;
  const bool hasFixedName_;
  std::vector<Subscription> subscriptions_;
  bool fromWidget_ = false;
};

/// The view for a control's type. Null when the widget is of a class that cannot show it.
std::unique_ptr<ControlView> MakeControlView(FormView& form, Control& control, QWidget& widget);

}  // namespace marovane
