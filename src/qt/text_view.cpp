#include "qt/text_view.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <algorithm>
#include <array>

#include "base/cp950.h"
#include "platform/form.h"
#include "qt/form_view.h"
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
  return event->type() == QEvent::InputMethod && FilterCommit(static_cast<QInputMethodEvent*>(event));
}

bool TextView::HandleKey(QKeyEvent* event) {
  if (isComposing_) return false;
  const QString text = event->text();
  if (SwallowsKey(*event)) return true;
  if (IsEditing(*event) && PassOn(event)) return true;
  if (text.size() != 1 || text.at(0) == '\t') return false;  // the tabulator moves the focus
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

// Some input methods deliver plain keys as committed text: what was not composed is filtered like a key.
bool TextView::FilterCommit(QInputMethodEvent* event) {
  const bool wasComposing = isComposing_;
  isComposing_ = !event->preeditString().isEmpty();
  if (!event->commitString().isEmpty() && PassOn(event)) return true;
  if (wasComposing || isComposing_ || event->commitString().isEmpty()) return false;
  QString text;
  for (const QChar character : event->commitString()) {
    const QChar filtered = Filtered(character);
    if (!filtered.isNull()) text += filtered;
  }
  if (!form_.IsDetached() && !text.isEmpty()) Insert(text);
  return true;
}

// A box with the property "typeInto" only holds the focus while another one must not have it: what is typed
// goes there, and the keys that edit act there.
bool TextView::PassOn(QEvent* event) {
  const QByteArray name = Widget().property("typeInto").toByteArray();
  if (name.isEmpty()) return false;
  Control* const target = form_.Model().Find(name.toStdString());
  ControlView* const view = target == nullptr ? nullptr : form_.Find(*target);
  if (view == nullptr || !target->AcceptsInput()) return false;
  target->SetFocus();
  QCoreApplication::sendEvent(&view->Widget(), event);
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
  Follow(box.Text, [this](const std::string& text) {
    if (line_.text() != Text(text)) line_.setText(Text(text));
  });
  const auto select = [this](int) { line_.setSelection(box_.SelStart, box_.SelLength); };
  Follow(box.SelStart, [this, select](int start) {
    line_.setCursorPosition(start);
    if (box_.SelLength > 0) select(start);
  });
  Follow(box.SelLength, select);
  connect(&widget, &QLineEdit::textEdited, this,
          [this](const QString& text) { Edited(text, line_.cursorPosition()); });
  const auto moved = [this] {
    if (line_.hasSelectedText()) return SelectionMoved(line_.selectionStart(), line_.selectionLength());
    SelectionMoved(line_.cursorPosition(), 0);
  };
  connect(&widget, &QLineEdit::selectionChanged, this, moved);
  connect(&widget, &QLineEdit::cursorPositionChanged, this, moved);
}

}  // namespace marovane
