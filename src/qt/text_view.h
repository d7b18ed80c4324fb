// Views of text boxes: a line (QLineEdit) or a text with styles (QTextEdit).
#pragma once

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTextCharFormat>
#include <QTextEdit>

#include "qt/control_view.h"

namespace marovane {

/// The key filter that both kinds have: KeyDown and KeyPress are raised before the widget acts, but never
/// for the keys of a composition that an input method has in progress.
class TextView : public ControlView {
 public:
  TextView(FormView& form, TextBox& box, QWidget& widget);

 protected:
  bool Handle(QEvent* event) override;
  bool HandleKey(QKeyEvent* event) override;
  bool MakesClicks() const override { return false; }
  virtual void Insert(const QString& text) = 0;

  /// A place in the model's text, where a line end may be two characters, and in the widget's, where it is
  /// one.
  int ToWidget(int position) const;
  int ToModel(int position) const;
  /// The user has edited: the text and the selection are copied, and Change is raised.
  /// The user has changed the text. The caret is known before anybody is told.
  void Edited(const QString& text, int caret);
  void SelectionMoved(int start, int length);

  TextBox& box_;

 private:
  bool FilterCommit(QInputMethodEvent* event);
  bool PassOn(QEvent* event);
  /// The character that the handlers of KeyPress let through, a null one for none.
  QChar Filtered(QChar character);

  bool isComposing_ = false;
};

class LineView : public TextView {
 public:
  LineView(FormView& form, TextBox& box, QLineEdit& widget);

 protected:
  void Insert(const QString& text) override { line_.insert(text); }

 private:
  QLineEdit& line_;
};

class RichTextView : public TextView {
 public:
  RichTextView(FormView& form, TextBox& box, QTextEdit& widget);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Insert(const QString& text) override { edit_.insertPlainText(text); }

 private:
  void FollowStyles(RichTextBox& box);
  void FollowFont();
  void ShowText(const std::string& text);
  void ShowSelection(bool isSeen);
  void Style(const QTextCharFormat& change);
  void StyleAll(const QTextCharFormat& change);
  void TextEdited();
  void CursorMoved();

  QTextEdit& edit_;
  QTextCharFormat typing_;  ///< style of the whole text and of what is typed next
  bool isShowing_ = false;
};

}  // namespace marovane
