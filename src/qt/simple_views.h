// Views of labels, buttons, boxes with a mark, pictures, lists and sliders.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QSlider>

#include "qt/control_view.h"

class QPainter;

namespace marovane {

/// A text. One that wraps becomes smaller where its label is too small for it.
class LabelView : public ControlView {
 public:
  LabelView(FormView& form, Label& label, QLabel& widget);
  void Ready() override;
  QAccessible::Role Role() const override;
  QString Caption() const override { return label_.text().trimmed(); }
  bool IsDecoration() const override { return RepeatsAButton(); }

 private:
  bool RepeatsAButton() const;
  void TellMessage();
  void Fit();
  void ShowStyle();

  QLabel& label_;
  QColor color_;
  int fontSize_ = 0;  // pixels; 0: as the style sheet has it
};

/// Something with a caption whose widget itself makes the clicks.
class ClickedView : public ControlView {
 public:
  ClickedView(FormView& form, Control& control, Property<std::string>& caption, QAbstractButton& widget);
  void ClickIt() override { button_.click(); }
  QString Caption() const override { return button_.text(); }
  bool CanBePressed() const override { return true; }

 protected:
  bool MakesClicks() const override { return false; }

 private:
  QAbstractButton& button_;
};

/// A push button.
class ButtonView : public ClickedView {
 public:
  ButtonView(FormView& form, CommandButton& button, QAbstractButton& widget)
      : ClickedView(form, button, button.Caption, widget) {}
  QAccessible::Role Role() const override { return QAccessible::PushButton; }

 protected:
  bool IsClickKey(int key) const override { return key == Qt::Key_Return || key == Qt::Key_Enter; }
};

/// A check box or an option. Options of one parent widget are a group.
class MarkView : public ClickedView {
 public:
  MarkView(FormView& form, CheckBox& box, QAbstractButton& widget);
  QAccessible::Role Role() const override;

 private:
  void Marked();
};

/// Paints a picture of the skin into a plain widget, with the text of the widget's property "caption" on it
/// (below the drawing in a tall widget), and a ring around it while it has the focus. Where the skin has no
/// picture of the name, a widget with a caption is painted as a button, whose state the name says:
/// "...Over_", "...On_", or any other. A button whose widget has the property "tab" chooses a page. While its
/// picture's name begins with the word in the property "breaksOff", it is a stop button.
class PictureView : public ControlView {
 public:
  PictureView(FormView& form, PictureBox& box, QWidget& widget);
  QString Problem() const override;
  QAccessible::Role Role() const override;
  QString Caption() const override { return Widget().property("caption").toString(); }
  bool IsDecoration() const override;
  bool IsChosen() const override;
  bool IsStopButton() const override;

 protected:
  bool Handle(QEvent* event) override;

 private:
  void Paint();
  void PaintCaption(QPainter& painter, const QColor& ink) const;
  /// Paints the face of a button; returns the ink for its caption.
  QColor PaintButton(QPainter& painter) const;

  PictureBox& box_;
  bool hasRing_ = false;  // it has the focus, and got it by the keyboard
};

class ListView : public ControlView {
 public:
  ListView(FormView& form, ComboBox& box, QComboBox& widget);

 protected:
  bool MakesClicks() const override { return false; }

 private:
  void Fill(QComboBox& widget, const std::vector<std::string>& items);
};

/// A slider.
class SliderView : public ControlView {
 public:
  SliderView(FormView& form, Slider& slider, QSlider& widget);

 protected:
  bool MakesClicks() const override { return false; }
};

}  // namespace marovane
