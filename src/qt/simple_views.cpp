#include "qt/simple_views.h"

#include <QFocusEvent>
#include <QPainter>
#include <QRadioButton>
#include <algorithm>

#include "platform/form.h"
#include "qt/form_view.h"
#include "qt/qt_windows.h"
#include "qt/text_convert.h"

namespace marovane {

namespace {

const QColor kAmber("#FFCC00");

Qt::Alignment QtAlignment(int alignment, Qt::Alignment before) {
  Qt::Alignment horizontal = Qt::AlignLeft;
  if (alignment == Label::kRightJustify) horizontal = Qt::AlignRight;
  if (alignment == Label::kCenter) horizontal = Qt::AlignHCenter;
  return horizontal | (before & Qt::AlignVertical_Mask);
}

// The text drawn with the window stays unless the controller has set one already.
template <class Widget>
void BindCaption(Property<std::string>& caption, Widget& widget) {
  if (caption().empty()) {
    caption = Utf8(widget.text());
  } else {
    widget.setText(Lines(caption));
  }
}

}  // namespace

LabelView::LabelView(FormView& form, Label& label, QLabel& widget)
    : ControlView(form, label, widget), label_(widget) {
  widget.setTextFormat(Qt::PlainText);
  BindCaption(label.Caption, widget);
  TellMessage();
  if (widget.alignment() & Qt::AlignHCenter) label.Alignment = Label::kCenter;
  if (widget.alignment() & Qt::AlignRight) label.Alignment = Label::kRightJustify;
  Follow(label.Caption, [this](const std::string& text) {
    label_.setText(Lines(text));
    Fit();
    TellMessage();
  });
  Follow(label.Alignment,
         [this](int alignment) { label_.setAlignment(QtAlignment(alignment, label_.alignment())); });
  Follow(label.ForeColor, [this](Color color) {
    color_ = QColor(QRgb(color));
    ShowStyle();
  });
}

void LabelView::Ready() {
  ControlView::Ready();
  if (RepeatsAButton()) label_.setFocusPolicy(Qt::NoFocus);
  Fit();
}

// The text of a message is the description of its window, which the toolkit tells anew when it is set.
void LabelView::TellMessage() {
  const QString text = label_.text().trimmed();
  if (!label_.property("message").toBool() || label_.window()->accessibleDescription() == text) return;
  label_.window()->setAccessibleDescription(text);
}

// A caption beside a button of the same name only makes the button easier to hit.
bool LabelView::RepeatsAButton() const {
  if (label_.accessibleName().isEmpty()) return false;
  const auto beside = label_.parentWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  return std::ranges::any_of(beside, [this](const QWidget* widget) {
    const ControlView* const view = Of(*widget);
    return view != nullptr && view->CanBePressed() && !widget->isHidden() &&
           qobject_cast<const QLabel*>(widget) == nullptr &&
           widget->accessibleName() == label_.accessibleName();
  });
}

QAccessible::Role LabelView::Role() const {
  if (!CanBePressed()) return QAccessible::StaticText;
  return label_.property("role").toString() == "link" ? QAccessible::Link : QAccessible::PushButton;
}

void LabelView::Fit() {
  constexpr int kSmallest = 10;
  if (!label_.wordWrap()) return;
  fontSize_ = 0;
  ShowStyle();
  label_.ensurePolished();
  for (int size = label_.fontInfo().pixelSize(); size > kSmallest; --size) {
    const QRect room(0, 0, label_.width(), label_.height());
    const QRect need = label_.fontMetrics().boundingRect(room, Qt::TextWordWrap, label_.text());
    if (need.height() <= room.height() && need.width() <= room.width()) return;
    fontSize_ = size - 1;
    ShowStyle();
  }
}

void LabelView::ShowStyle() {
  QString style;
  if (color_.isValid()) style += "color: " + color_.name() + ";";
  if (fontSize_ > 0) style += QString("font-size: %1px;").arg(fontSize_);
  if (label_.styleSheet() != style) label_.setStyleSheet(style);
}

ClickedView::ClickedView(FormView& form, Control& control, Property<std::string>& caption,
                         QAbstractButton& widget)
    : ControlView(form, control, widget), button_(widget) {
  BindCaption(caption, widget);
  Follow(caption, [&widget](const std::string& text) { widget.setText(Text(text)); });
  connect(&widget, &QAbstractButton::clicked, this, [this] {
    Raise([this] {
      form_.RefreshPages();
      Model().Click.Raise();
    });
  });
}

MarkView::MarkView(FormView& form, CheckBox& box, QAbstractButton& widget)
    : ClickedView(form, box, box.Caption, widget) {
  if (widget.isChecked()) box.Value = true;
  widget.setChecked(box.Value);
  Follow(box.Value, [&widget](bool value) { widget.setChecked(value); });
  connect(&widget, &QAbstractButton::toggled, this, [this, &box](bool value) {
    FromWidget([&] { box.Value = value; });
    if (value) Marked();
  });
  if (box.Value) Marked();
}

// Tab comes to the chosen option of a group, and arrows choose another one. The toolkit alone comes to the
// first option, whichever is chosen.
void MarkView::Marked() {
  const auto* const chosen = qobject_cast<const QRadioButton*>(&Widget());
  if (chosen == nullptr) return;
  for (auto* option : Widget().parentWidget()->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly)) {
    if (option->group() != chosen->group()) continue;
    option->setFocusPolicy(option == chosen ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

QAccessible::Role MarkView::Role() const {
  return qobject_cast<const QRadioButton*>(&Widget()) != nullptr ? QAccessible::RadioButton
                                                                 : QAccessible::CheckBox;
}

PictureView::PictureView(FormView& form, PictureBox& box, QWidget& widget)
    : ControlView(form, box, widget), box_(box) {
  Follow(box.Picture, [&widget](const std::string&) { widget.update(); });
}

// A picture of the form that the skin does not draw, such as its background, is no mistake; another name is.
QString PictureView::Problem() const {
  const QString name = Text(box_.Picture);
  if (name.isEmpty() || form_.Model().Find(Utf8(name)) != nullptr) return "";
  if (form_.Windows().Pictures().Find(Text(form_.Model().Name()), name) != nullptr) return "";
  return Text(box_.Name()) + ": no picture " + name;
}

QAccessible::Role PictureView::Role() const {
  if (CanBePressed())
    return Widget().property("tab").toBool() ? QAccessible::PageTab : QAccessible::PushButton;
  return Widget().findChild<QWidget*>() != nullptr ? QAccessible::Pane : QAccessible::Graphic;
}

bool PictureView::IsDecoration() const {
  if (CanBePressed() || !Widget().accessibleName().isEmpty()) return false;
  const auto within = Widget().findChildren<QWidget*>();
  return std::ranges::all_of(within, [](const QWidget* widget) {
    const ControlView* const view = Of(*widget);
    return view == nullptr || view->IsDecoration();
  });
}

bool PictureView::IsStopButton() const {
  const QString stop = Widget().property("breaksOff").toString();
  return !stop.isEmpty() && Text(box_.Picture).startsWith(stop) && box_.AcceptsInput();
}

bool PictureView::IsChosen() const { return Text(box_.Picture).contains("On_"); }

bool PictureView::Handle(QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool isBack = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
    if (!isBack) hasRing_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
  }
  if (event->type() != QEvent::Paint) return false;
  Paint();
  return true;
}

void PictureView::Paint() {
  QPainter painter(&Widget());
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF room = Widget().rect();
  const bool isButton = !Caption().isEmpty();
  SkinPicture* const picture =
      form_.Windows().Pictures().Find(Text(form_.Model().Name()), Text(box_.Picture));
  if (picture != nullptr) picture->drawing.render(&painter, room);
  if (isButton) PaintCaption(painter, picture != nullptr ? picture->ink : PaintButton(painter));
  if (!hasRing_ || !Widget().hasFocus()) return;
  painter.setPen(QPen(kAmber, 1.5));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(room.adjusted(1.5, 1.5, -1.5, -1.5), 6, 6);
}

void PictureView::PaintCaption(QPainter& painter, const QColor& ink) const {
  constexpr int kTall = 48;  // from here on there is a drawing above the caption
  painter.setPen(Widget().isEnabled() ? ink : QColor("#8a8a8a"));
  painter.setFont(Widget().font());
  const bool isBelow = Widget().height() >= kTall;
  painter.drawText(Widget().rect().adjusted(0, 0, 0, isBelow ? -6 : 0),
                   Qt::AlignHCenter | (isBelow ? Qt::AlignBottom : Qt::AlignVCenter), Caption());
}

QColor PictureView::PaintButton(QPainter& painter) const {
  const QString name = Text(box_.Picture);
  const bool isOver = name.contains("Over_");
  const bool isOn = IsChosen();
  const QRectF face = QRectF(Widget().rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  QLinearGradient fill(face.topLeft(), face.bottomLeft());
  fill.setColorAt(0, isOn ? "#333333" : isOver ? "#6b6b6b" : "#5a5a5a");
  fill.setColorAt(1, isOn ? "#333333" : isOver ? "#535353" : "#464646");
  painter.setPen(QPen(QColor("#222222"), 1));
  painter.setBrush(fill);
  painter.drawRoundedRect(face, 7, 7);
  painter.setPen(QPen(isOn ? QColor(0, 0, 0, 120) : QColor(255, 255, 255, 43), 1));
  painter.drawLine(face.topLeft() + QPointF(6, 1), face.topRight() + QPointF(-6, 1));
  return isOver || isOn ? kAmber : QColor("#f2f0ea");
}

ListView::ListView(FormView& form, ComboBox& box, QComboBox& widget) : ControlView(form, box, widget) {
  // On X the toolkit gives a list the name of its chosen item.
  widget.setAccessibleDescription(widget.accessibleName());
  if (box.Items().empty() && widget.count() > 0) {
    std::vector<std::string> items;
    items.reserve(static_cast<std::size_t>(widget.count()));
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

SliderView::SliderView(FormView& form, Slider& slider, QSlider& widget) : ControlView(form, slider, widget) {
  widget.setValue(slider.Value);
  Follow(slider.Value, [&widget](int value) { widget.setValue(value); });
  connect(&widget, &QSlider::valueChanged, this, [this, &slider, &widget](int value) {
    if (value == slider.Value) return;  // it came from the model
    Raise([this, &slider, &widget, value] {
      if (!slider.AcceptsInput()) return widget.setValue(slider.Value);  // a screen reader passes all filters
      FromWidget([&] { slider.Value = value; });
    });
  });
}

}  // namespace marovane
