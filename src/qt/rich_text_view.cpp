#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>

#include "platform/form.h"
#include "qt/fonts.h"
#include "qt/form_view.h"
#include "qt/text_convert.h"
#include "qt/text_view.h"

namespace marovane {

namespace {

QTextCharFormat FontFormat(const QString& family) {
  QTextCharFormat format;
  format.setFontFamilies(FontFamilies(family));
  return format;
}

QTextCharFormat SizeFormat(int points) {
  QTextCharFormat format;
  format.setProperty(QTextFormat::FontPixelSize, MakeFont("", points).pixelSize());
  return format;
}

// How much two texts have in common at the front, and then at the back.
qsizetype CommonPrefix(const QString& a, const QString& b) {
  const qsizetype most = std::min(a.size(), b.size());
  qsizetype length = 0;
  while (length < most && a[length] == b[length]) ++length;
  return length;
}

qsizetype CommonSuffix(const QString& a, const QString& b, qsizetype prefix) {
  const qsizetype most = std::min(a.size(), b.size()) - prefix;
  qsizetype length = 0;
  while (length < most && a[a.size() - 1 - length] == b[b.size() - 1 - length]) ++length;
  return length;
}

}  // namespace

RichTextView::RichTextView(FormView& form, TextBox& box, QTextEdit& widget)
    : TextView(form, box, widget), edit_(widget) {
  widget.setAcceptRichText(false);
  widget.setTabChangesFocus(true);
  widget.setContextMenuPolicy(Qt::NoContextMenu);
  widget.viewport()->setMouseTracking(true);
  // It is nothing by itself for those who do not see it, and the toolkit leaves out what has this name.
  widget.viewport()->setObjectName("qt_rubberband");
  widget.viewport()->installEventFilter(this);
  if (box.Text().empty()) {
    box.Text = Utf8(widget.toPlainText());
  } else {
    ShowText(box.Text);
  }
  Follow(box.Text, [this](const std::string& text) { ShowText(text); });
  Follow(box.SelStart, [this](int) { ShowSelection(edit_.hasFocus()); });
  Follow(box.SelLength, [this](int) { ShowSelection(edit_.hasFocus()); });
  FollowFont();
  if (auto* rich = dynamic_cast<RichTextBox*>(&box)) FollowStyles(*rich);
  connect(&widget, &QTextEdit::textChanged, this, [this] { TextEdited(); });
  connect(&widget, &QTextEdit::cursorPositionChanged, this, [this] { CursorMoved(); });
  connect(&widget, &QTextEdit::selectionChanged, this, [this] { CursorMoved(); });
}

// The mouse events of a scrolled text go to its viewport.
bool RichTextView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == edit_.viewport() && event->type() >= QEvent::MouseButtonPress &&
      event->type() <= QEvent::MouseMove) {
    return TextView::eventFilter(&edit_, event);
  }
  const bool isFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
  if (watched == &edit_ && isFocus && !form_.IsDetached()) ShowSelection(event->type() == QEvent::FocusIn);
  return TextView::eventFilter(watched, event);
}

void RichTextView::FollowFont() {
  Follow(box_.FontName, [this](const std::string& name) { StyleAll(FontFormat(Text(name))); });
  Follow(box_.FontSize, [this](int points) { StyleAll(SizeFormat(points)); });
}

void RichTextView::FollowStyles(RichTextBox& box) {
  Follow(box.SelColor, [this](Color color) {
    QTextCharFormat format;
    format.setForeground(QColor(QRgb(color)));
    Style(format);
  });
  Follow(box.SelFontName, [this](const std::string& name) { Style(FontFormat(Text(name))); });
  Follow(box.SelFontSize, [this](int points) { Style(SizeFormat(points)); });
  Follow(box.SelBold, [this](bool bold) {
    QTextCharFormat format;
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    Style(format);
  });
  Follow(box.SelUnderline, [this](bool underline) {
    QTextCharFormat format;
    format.setFontUnderline(underline);
    Style(format);
  });
}

// Only what differs is replaced, so that the rest keeps its styles.
void RichTextView::ShowText(const std::string& modelText) {
  const QString fresh = Lines(modelText);
  const QString shown = edit_.toPlainText();
  if (fresh == shown) return;
  const bool before = std::exchange(isShowing_, true);
  const QTextCharFormat style = edit_.currentCharFormat();
  const qsizetype prefix = CommonPrefix(shown, fresh);
  const qsizetype suffix = CommonSuffix(shown, fresh, prefix);
  QTextCursor cursor(edit_.document());
  cursor.setPosition(int(prefix));
  cursor.setPosition(int(shown.size() - suffix), QTextCursor::KeepAnchor);
  cursor.insertText(fresh.mid(prefix, fresh.size() - prefix - suffix), style);
  edit_.setCurrentCharFormat(style);
  isShowing_ = before;
}

// Without the focus a selection is kept, but not seen.
void RichTextView::ShowSelection(bool isSeen) {
  const bool before = std::exchange(isShowing_, true);
  const int last = edit_.document()->characterCount() - 1;
  const int start = std::min(ToWidget(box_.SelStart), last);
  const int end = isSeen ? std::min(ToWidget(box_.SelStart + box_.SelLength), last) : start;
  const QTextCharFormat style = edit_.currentCharFormat();
  QTextCursor cursor = edit_.textCursor();
  cursor.setPosition(start);
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  edit_.setTextCursor(cursor);
  // A caret at the very start would otherwise forget the style that was set for what is typed next.
  if (start == end && edit_.document()->isEmpty()) edit_.setCurrentCharFormat(style);
  isShowing_ = before;
}

void RichTextView::Style(const QTextCharFormat& change) {
  if (box_.SelLength == 0) return StyleAll(change);
  const bool before = std::exchange(isShowing_, true);
  QTextCursor cursor(edit_.document());
  cursor.setPosition(ToWidget(box_.SelStart));
  cursor.setPosition(ToWidget(box_.SelStart + box_.SelLength), QTextCursor::KeepAnchor);
  cursor.mergeCharFormat(change);
  if (cursor.selectionStart() == 0 && cursor.selectionEnd() == edit_.document()->characterCount() - 1) {
    edit_.mergeCurrentCharFormat(change);
    typing_.merge(change);
  }
  isShowing_ = before;
}

void RichTextView::StyleAll(const QTextCharFormat& change) {
  const bool before = std::exchange(isShowing_, true);
  QTextCursor cursor(edit_.document());
  cursor.select(QTextCursor::Document);
  cursor.mergeCharFormat(change);
  typing_.merge(change);
  QTextCharFormat style = edit_.currentCharFormat();
  style.merge(change);
  edit_.setCurrentCharFormat(style);
  isShowing_ = before;
}

void RichTextView::TextEdited() {
  if (isShowing_) return;
  const QString text = edit_.toPlainText();
  if (text == Lines(box_.Text)) return;  // only styles changed
  if (!MayEdit()) return ShowText(box_.Text);
  if (box_.Text().empty())
    StyleAll(QTextCharFormat(typing_));  // a caret that was moved in an empty text has lost its style
  Edited(text, edit_.textCursor().position());
  CursorMoved();
}

void RichTextView::CursorMoved() {
  if (isShowing_ || edit_.toPlainText() != Lines(box_.Text)) return;
  const QTextCursor cursor = edit_.textCursor();
  SelectionMoved(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart());
}

}  // namespace marovane
