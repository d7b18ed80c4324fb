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
///
/// A box whose widget has the property "typeInto", the name of another box, only holds the focus while that
/// one must not have it: what is typed or composed goes there, and the keys that edit act there.
class TextView : public ControlView {
 public:
  TextView(FormView& form, TextBox& box, QWidget& widget);
  bool IsComposing() const override { return isComposing_; }

 protected:
  bool Handle(QEvent* event) override;
  bool HandleKey(QKeyEvent* event) override;
  bool MakesClicks() const override { return false; }
  virtual void Insert(const QString& text) = 0;
  /// Where the widget has the point from which it says the place of its caret.
  virtual QPoint CaretOrigin() const { return {}; }

  /// A place in the model's text, where a line end may be two characters, and in the widget's, where it is
  /// one.
  int ToWidget(int position) const;
  int ToModel(int position) const;
  /// False while no input is taken: screen readers edit a text past all filters.
  bool MayEdit() const;
  /// The user has edited: the text and the caret are copied, and then Change is raised.
  void Edited(const QString& text, int caret);
  void SelectionMoved(int start, int length);

  TextBox& box_;
  bool isShowing_ = false;  // the widget changes by the model's wish

 private:
  /// The view of the box that gets what is typed here; null when it is this one.
  TextView* TypingTarget() const;
  bool HandleComposingKey(const QKeyEvent& event);
  bool Composed(QInputMethodEvent* event);
  void DropComposition();
  bool FilterCommit(const QInputMethodEvent& event);
  void PassOnComposition(TextView& target, QInputMethodEvent* event);
  bool Answer(QInputMethodQueryEvent* query);
  /// The character that the handlers of KeyPress let through, a null one for none.
  QChar Filtered(QChar character);

  bool isCommitting_ = false;
  bool isComposing_ = false;       // something is composed that is not part of the text yet
  QPointer<TextView> composedIn_;  // where it is seen; null: here
};

class LineView : public TextView {
 public:
  LineView(FormView& form, TextBox& box, QLineEdit& widget);

 protected:
  void Insert(const QString& text) override { line_.insert(text); }

 private:
  void ShowText(const std::string& text);
  void TextEdited(const QString& text);

  QLineEdit& line_;
};

class RichTextView : public TextView {
 public:
  RichTextView(FormView& form, TextBox& box, QTextEdit& widget);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Insert(const QString& text) override { edit_.insertPlainText(text); }
  QPoint CaretOrigin() const override { return edit_.viewport()->pos(); }

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
};

}  // namespace marovane
