#include "core/window_shell.h"

#include <algorithm>

#include "platform/form.h"
#include "platform/machine.h"
#include "platform/window_system.h"

namespace marovane {

void SkinForm(Form& form, int alpha) { form.Alpha = alpha; }

void CenterForm(Form& form) {
  const Area screen = form.machine.windows.Screen();
  form.Top = screen.top + (screen.height - form.Height) / 2;
  form.Left = screen.left + (screen.width - form.Width) / 2;
}

Fade::Fade(Form& form) : tmrTransparentForm(form.machine.loop, 10, Timer::Kind::kVisual), form_(form) {
  tmrTransparentForm.onTick = [this] { Tick(); };
}

void Fade::In() {
  alpha_ = 0;
  step_ = kInStep;
  SkinForm(form_, alpha_);
  tmrTransparentForm.Enabled = true;
}

void Fade::ShowAtOnce() {
  tmrTransparentForm.Enabled = false;
  alpha_ = target_;
  step_ = kInStep;
  SkinForm(form_, alpha_);
}

void Fade::Out() {
  step_ = kOutStep;
  tmrTransparentForm.Enabled = true;
}

void Fade::Tick() {
  alpha_ = std::clamp(alpha_ + step_, 0, target_);
  SkinForm(form_, alpha_);
  // During a request the timer ticks on, so that the end comes after it.
  const bool isOver = alpha_ == 0 || alpha_ == target_;
  if (isOver && !form_.machine.loop.IsBlocked()) End();
}

void Fade::End() {
  tmrTransparentForm.Enabled = false;
  if (alpha_ > 0) return;
  if (onGone) {
    onGone();
  } else {
    form_.Unload();
  }
}

}  // namespace marovane
