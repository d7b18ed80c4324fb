#include "qt/simple_views.h"

#include <QButtonGroup>
#include <QPainter>

#include "platform/form.h"
#include "qt/form_view.h"
#include "qt/qt_windows.h"
#include "qt/text_convert.h"

namespace {

Qt::Alignment QtAlignment(int alignment, Qt::Alignment before) {
  Qt::Alignment horizontal = Qt::AlignLeft;
  if (alignment == Label::kRightJustify) horizontal = Qt::AlignRight;
  if (alignment == Label::kCenter) horizontal = Qt::AlignHCenter;
  return horizontal | (before & Qt::AlignVertical_Mask);
}

// The text drawn with the window stands unless the controller has set one already.
template <class Model, class Widget>
void TakeCaption(Model& model, Widget& widget) {
  if (model.Caption().empty()) {
    model.Caption = Utf8(widget.text());
  } else {
    widget.setText(Lines(model.Caption));
  }
}

}  // namespace

LabelView::LabelView(FormView& form, Label& label, QLabel& widget) : ControlView(form, label, widget) {
  widget.setTextFormat(Qt::PlainText);
  TakeCaption(label, widget);
  if (widget.alignment() & Qt::AlignHCenter) label.Alignment = Label::kCenter;
  if (widget.alignment() & Qt::AlignRight) label.Alignment = Label::kRightJustify;
  Follow(label.Caption, [&widget](const std::string& text) { widget.setText(Lines(text)); });
  Follow(label.Alignment,
         [&widget](int alignment) { widget.setAlignment(QtAlignment(alignment, widget.alignment())); });
  Follow(label.ForeColor,
         [&widget](Color color) { widget.setStyleSheet("color: " + QColor(QRgb(color)).name()); });
}

ButtonView::ButtonView(FormView& form, CommandButton& button, QAbstractButton& widget)
    : ControlView(form, button, widget) {
  TakeCaption(button, widget);
  Follow(button.Caption, [&widget](const std::string& text) { widget.setText(Text(text)); });
  connect(&widget, &QAbstractButton::clicked, this, [this] {
    Raise([this] {
      // A menu goes before what was chosen in it begins.
      if (form_.IsPopup()) form_.Model().Hide();
      form_.RefreshPages();
      Model().Click.Raise();
    });
  });
}

void ButtonView::ClickIt() { static_cast<QAbstractButton&>(Widget()).click(); }

bool ButtonView::IsClickKey(int key) const { return key == Qt::Key_Return || key == Qt::Key_Enter; }

MarkView::MarkView(FormView& form, CheckBox& box, QAbstractButton& widget) : ControlView(form, box, widget) {
  TakeCaption(box, widget);
  if (widget.isChecked()) box.Value = true;
  widget.setChecked(box.Value);
  Follow(box.Caption, [&widget](const std::string& text) { widget.setText(Text(text)); });
  Follow(box.Value, [&widget](bool value) { widget.setChecked(value); });
  connect(&widget, &QAbstractButton::toggled, this,
          [this, &box](bool value) { FromWidget([&] { box.Value = value; }); });
  connect(&widget, &QAbstractButton::clicked, this, [this] {
    Raise([this] {
      form_.RefreshPages();
      Model().Click.Raise();
    });
  });
}

void MarkView::ClickIt() { static_cast<QAbstractButton&>(Widget()).click(); }

PictureView::PictureView(FormView& form, PictureBox& box, QWidget& widget)
    : ControlView(form, box, widget), box_(box) {
  Follow(box.Picture, [&widget](const std::string&) { widget.update(); });
}

QString PictureView::Problem() const {
  const QString name = Text(box_.Picture);
  if (name.isEmpty() || name == Text(box_.Name())) return "";
  if (form_.Windows().Pictures().Find(Text(form_.Model().Name()), name) != nullptr) return "";
  return Text(box_.Name()) + ": no picture " + name;
}

bool PictureView::Handle(QEvent* event) {
  if (event->type() != QEvent::Paint) return false;
  Paint();
  return true;
}

void PictureView::Paint() {
  QPainter painter(&Widget());
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF room = Widget().rect();
  SkinPicture* const picture =
      form_.Windows().Pictures().Find(Text(form_.Model().Name()), Text(box_.Picture));
  if (picture != nullptr) picture->drawing.render(&painter, room);
  const QString caption = Widget().property("caption").toString();
  if (!caption.isEmpty()) {
    painter.setPen(picture != nullptr ? picture->ink : QColor("#f2f0ea"));
    painter.setFont(Widget().font());
    painter.drawText(room.adjusted(0, 0, 0, -5), Qt::AlignHCenter | Qt::AlignBottom, caption);
  }
  if (Widget().hasFocus()) {
    painter.setPen(QPen(QColor("#FFCC00"), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(room.adjusted(1.5, 1.5, -1.5, -1.5), 6, 6);
  }
}

ListView::ListView(FormView& form, ComboBox& box, QComboBox& widget) : ControlView(form, box, widget) {
  if (box.Items().empty() && widget.count() > 0) {
    std::vector<std::string> items;
    for (int i = 0; i < widget.count(); ++i) items.push_back(Utf8(widget.itemText(i)));
    box.Items = items;
  }
  Fill(widget, box.Items);
  widget.setCurrentIndex(box.ListIndex);
  Follow(box.Items, [this, &widget](const std::vector<std::string>& items) { Fill(widget, items); });
  Follow(box.ListIndex, [&widget](int index) { widget.setCurrentIndex(index); });
  connect(&widget, &QComboBox::activated, this, [this, &box](int index) {
    FromWidget([&] { box.ListIndex = index; });
    Raise([&box] { box.Click.Raise(); });
  });
}

void ListView::Fill(QComboBox& widget, const std::vector<std::string>& items) {
  widget.clear();
  for (const std::string& item : items) widget.addItem(Text(item));
  widget.setCurrentIndex(static_cast<ComboBox&>(Model()).ListIndex);
}
