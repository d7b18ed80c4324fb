#include "qt/text_view.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QKeySequence>
#include <algorithm>
#include <array>

#include "base/cp950.h"
#include "platform/form.h"
#include "qt/form_view.h"
#include "qt/qt_windows.h"
#include "qt/text_convert.h"

namespace marovane {

namespace {

// Moves the caret, selects, deletes, or deals with the clipboard.
bool IsEditing(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
      return true;
    default:
      break;
  }
  constexpr std::array kCommands{QKeySequence::SelectAll, QKeySequence::Copy, QKeySequence::Cut,
                                 QKeySequence::Paste,     QKeySequence::Undo, QKeySequence::Redo};
  return std::ranges::any_of(kCommands, [&event](auto command) { return event.matches(command); });
}

}  // namespace

TextView::TextView(FormView& form, TextBox& box, QWidget& widget)
    : ControlView(form, box, widget), box_(box) {}

bool TextView::Handle(QEvent* event) {
  switch (event->type()) {
    case QEvent::InputMethod:
      return Composed(static_cast<QInputMethodEvent*>(event));
    case QEvent::InputMethodQuery:
      return Answer(static_cast<QInputMethodQueryEvent*>(event));
    case QEvent::FocusOut:
      DropComposition();
      return false;
    default:
      return false;
  }
}

bool TextView::HandleKey(QKeyEvent* event) {
  if (isComposing_) return HandleComposingKey(*event);
  // The tabulator moves the focus whatever a filter keeps: without a mouse it is the way out of a box.
  if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) return false;
  const QString text = event->text();
  if (SwallowsKey(*event)) return true;
  if (IsEditing(*event) && PassOn(event)) return true;
  if (text.size() != 1) return false;
  const QChar filtered = Filtered(text.at(0));
  if (filtered.isNull() || form_.IsDetached()) return true;
  if (filtered.isPrint() && PassOn(event)) return true;
  if (filtered == text.at(0)) return false;
  Insert(filtered);
  return true;
}

QChar TextView::Filtered(QChar character) {
  const int before = base::Asc(character.unicode());
  int after = before;
  Raise([this, &after] { box_.KeyPress.Raise(after); });
  return after == before ? character : QChar(after);
}

// Some input methods let these keys through: they end the composition, and nothing else.
bool TextView::HandleComposingKey(const QKeyEvent& event) {
  const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  if (isEnter) QGuiApplication::inputMethod()->commit();
  if (event.key() == Qt::Key_Escape) QGuiApplication::inputMethod()->reset();
  return isEnter || event.key() == Qt::Key_Escape;
}

// What an input method has not committed when the focus goes is lost, for it as for the box. The widget is
// told without the filters, which keep input from a window behind a question.
void TextView::DropComposition() {
  if (!std::exchange(isComposing_, false)) return;
  if (composedIn_) return composedIn_->DropComposition();
  QInputMethodEvent nothing;
  static_cast<QObject&>(Widget()).event(&nothing);
}

bool TextView::Composed(QInputMethodEvent* event) {
  const bool wasComposing = isComposing_;
  isComposing_ = !event->preeditString().isEmpty();
  const bool isComposed = wasComposing || isComposing_;
  if (!isComposed && event->commitString().isEmpty()) return false;
  if (!wasComposing) composedIn_ = TypingTarget();
  if (composedIn_) {
    PassOnComposition(*composedIn_, event);
    return true;
  }
  if (!isComposed) return FilterCommit(*event);
  const bool before = std::exchange(isCommitting_, true);
  static_cast<QObject&>(Widget()).event(event);
  isCommitting_ = before;
  return true;
}

bool TextView::MayEdit() const {
  return isCommitting_ || (box_.AcceptsInput() && !form_.Windows().Loop().IsBlocked());
}

// Some input methods deliver plain keys as committed text: what was not composed is filtered like a key.
bool TextView::FilterCommit(const QInputMethodEvent& event) {
  QString text;
  for (const QChar character : event.commitString()) {
    const QChar filtered = Filtered(character);
    if (!filtered.isNull()) text += filtered;
  }
  if (!form_.IsDetached() && !text.isEmpty()) Insert(text);
  return true;
}

TextView* TextView::TypingTarget() const { return dynamic_cast<TextView*>(ControlView::TypingTarget()); }

// A widget that loses the focus has its composition ended by the toolkit. So the other box gets the focus
// when the composition is over, and behaves in the meantime as if it had it.
void TextView::PassOnComposition(TextView& target, QInputMethodEvent* event) {
  form_.Windows().CountAsFocused(target.Model());
  QCoreApplication::sendEvent(&target.Widget(), event);
  QGuiApplication::inputMethod()->update(Qt::ImCursorRectangle);
  if (isComposing_) return;
  const auto follow = [this, box = QPointer<TextView>(&target)] {
    if (box && !form_.IsDetached() && !isComposing_ && Widget().hasFocus()) box->Model().SetFocus();
  };
  const auto enter = [this, follow] { form_.Windows().Loop().Enter(this, follow); };
  QMetaObject::invokeMethod(this, enter, Qt::QueuedConnection);
}

// Input methods ask where the caret is, to show their candidates below it.
bool TextView::Answer(QInputMethodQueryEvent* query) {
  TextView* const other = TypingTarget();
  TextView& asked = other == nullptr ? *this : *other;
  static_cast<QObject&>(asked.Widget()).event(query);
  const QPoint offset = asked.Widget().mapToGlobal(asked.CaretOrigin()) - Widget().mapToGlobal(QPoint());
  for (const Qt::InputMethodQuery place : {Qt::ImCursorRectangle, Qt::ImAnchorRectangle}) {
    if (query->queries() & place) query->setValue(place, query->value(place).toRectF().translated(offset));
  }
  return true;
}

int TextView::ToWidget(int position) const {
  const QString text = Text(box_.Text);
  const QString before = text.left(position);
  return int(before.size() - before.count("\r\n"));
}

int TextView::ToModel(int position) const {
  const QString text = Text(box_.Text);
  int model = 0;
  for (int widget = 0; widget < position && model < text.size(); ++widget) {
    model += text.mid(model, 2) == "\r\n" ? 2 : 1;
  }
  return model;
}

void TextView::Edited(const QString& text, int caret) {
  FromWidget([&] { box_.Text = Utf8(QString(text).replace("\n", "\r\n")); });
  SelectionMoved(caret, 0);
  Raise([this] { box_.Change.Raise(); });
}

void TextView::SelectionMoved(int start, int length) {
  FromWidget([&] {
    const int modelStart = ToModel(start);
    box_.SelStart = modelStart;
    box_.SelLength = ToModel(start + length) - modelStart;
  });
}

LineView::LineView(FormView& form, TextBox& box, QLineEdit& widget)
    : TextView(form, box, widget), line_(widget) {
  if (box.Text().empty()) box.Text = Utf8(widget.text());
  widget.setText(Text(box.Text));
  Follow(box.Text, [this](const std::string& text) { ShowText(text); });
  const auto select = [this](int) { line_.setSelection(box_.SelStart, box_.SelLength); };
  Follow(box.SelStart, [this, select](int start) {
    line_.setCursorPosition(start);
    if (box_.SelLength > 0) select(start);
  });
  Follow(box.SelLength, select);
  connect(&widget, &QLineEdit::textChanged, this, [this](const QString& text) { TextEdited(text); });
  const auto moved = [this] {
    if (line_.hasSelectedText()) return SelectionMoved(line_.selectionStart(), line_.selectionLength());
    SelectionMoved(line_.cursorPosition(), 0);
  };
  connect(&widget, &QLineEdit::selectionChanged, this, moved);
  connect(&widget, &QLineEdit::cursorPositionChanged, this, moved);
}

void LineView::ShowText(const std::string& text) {
  if (line_.text() == Text(text)) return;
  const bool before = std::exchange(isShowing_, true);
  line_.setText(Text(text));
  isShowing_ = before;
}

void LineView::TextEdited(const QString& text) {
  if (isShowing_ || form_.IsDetached()) return;
  if (!MayEdit()) return ShowText(box_.Text);
  Edited(text, line_.cursorPosition());
}

}  // namespace marovane
