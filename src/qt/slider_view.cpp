#include "qt/slider_view.h"

namespace marovane {

SliderView::SliderView(FormView& form, Slider& slider, QSlider& widget) : ControlView(form, slider, widget) {
  widget.setValue(slider.Value);
  Follow(slider.Value, [&widget](int value) { widget.setValue(value); });
  connect(&widget, &QSlider::valueChanged, this, [this, &slider](int value) {
    if (value == slider.Value) return;  // it came from the model
    Raise([this, &slider, value] { FromWidget([&] { slider.Value = value; }); });
  });
}

}  // namespace marovane
