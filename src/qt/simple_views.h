// Views of labels, buttons, boxes with a mark, pictures and lists.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>

#include "qt/control_view.h"

class QPainter;

namespace marovane {

/// A text. One that wraps becomes smaller where its label is too small for it.
class LabelView : public ControlView {
 public:
  LabelView(FormView& form, Label& label, QLabel& widget);
  void Ready() override;

 private:
  void Fit();
  void ShowStyle();

  QLabel& label_;
  QColor color_;
  int fontSize_ = 0;  // pixels; 0: as the style sheet has it
};

/// A push button.
class ButtonView : public ControlView {
 public:
  ButtonView(FormView& form, CommandButton& button, QAbstractButton& widget);
  void ClickIt() override;

 protected:
  bool MakesClicks() const override { return false; }
  bool IsClickKey(int key) const override;
};

/// A check box or an option. Options of one parent widget are a group.
class MarkView : public ControlView {
 public:
  MarkView(FormView& form, CheckBox& box, QAbstractButton& widget);
  void ClickIt() override;

 protected:
  bool MakesClicks() const override { return false; }
};

/// Paints a picture of the skin into a plain widget, with the text of the widget's property "caption" on it
/// (below the drawing in a tall widget), and a ring around it while it has the focus. Where the skin has no
/// picture of the name, a widget with a caption is painted as a button, whose state the name tells:
/// "...Over_",
/// "...On_", or any other.
class PictureView : public ControlView {
 public:
  PictureView(FormView& form, PictureBox& box, QWidget& widget);
  QString Problem() const override;

 protected:
  bool Handle(QEvent* event) override;

 private:
  void Paint();
  void PaintCaption(QPainter& painter, const QColor& ink) const;
  /// Paints the face of a button; gives the ink for its caption.
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

}  // namespace marovane
