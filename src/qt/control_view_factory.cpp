#include "platform/web_browser.h"
#include "qt/browser_view.h"
#include "qt/control_view.h"
#include "qt/simple_views.h"
#include "qt/text_view.h"

namespace marovane {

namespace {

// A view of the given kind, if control and widget are of the types that it binds.
template <class View, class Model, class WidgetType>
std::unique_ptr<ControlView> TryMake(FormView& form, Control& control, QWidget& widget) {
  auto* const model = dynamic_cast<Model*>(&control);
  auto* const shown = dynamic_cast<WidgetType*>(&widget);
  if (model == nullptr || shown == nullptr) return nullptr;
  return std::make_unique<View>(form, *model, *shown);
}

}  // namespace

std::unique_ptr<ControlView> MakeControlView(FormView& form, Control& control, QWidget& widget) {
  using Maker = std::unique_ptr<ControlView> (*)(FormView&, Control&, QWidget&);
  constexpr Maker kMakers[] = {
      TryMake<LabelView, Label, QLabel>,
      TryMake<ButtonView, CommandButton, QAbstractButton>,
      TryMake<MarkView, CheckBox, QAbstractButton>,
      TryMake<PictureView, PictureBox, QWidget>,
      TryMake<RichTextView, TextBox, QTextEdit>,
      TryMake<LineView, TextBox, QLineEdit>,
      TryMake<ListView, ComboBox, QComboBox>,
      TryMake<SliderView, Slider, QSlider>,
      TryMake<BrowserView, WebBrowser, QWidget>,
  };
  for (const Maker make : kMakers) {
    if (auto view = make(form, control, widget)) return view;
  }
  return nullptr;
}

}  // namespace marovane
