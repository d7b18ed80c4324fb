// View of a slider.
#pragma once

#include <QSlider>

#include "qt/control_view.h"

namespace marovane {

class SliderView : public ControlView {
 public:
  SliderView(FormView& form, Slider& slider, QSlider& widget);

 protected:
  bool MakesClicks() const override { return false; }
};

}  // namespace marovane
