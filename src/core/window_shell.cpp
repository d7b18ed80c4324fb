#include "core/window_shell.h"

#include "platform/form.h"
#include "platform/machine.h"
#include "platform/window_system.h"

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
  alpha_ += step_;
  const bool isShown = alpha_ >= target_;
  if (isShown) {
    alpha_ = target_;
    tmrTransparentForm.Enabled = false;
  }
  if (alpha_ > 0) {
    SkinForm(form_, alpha_);
    if (isShown && onShown) onShown();
    return;
  }
  alpha_ = 0;
  tmrTransparentForm.Enabled = false;
  if (onGone) {
    onGone();
  } else {
    form_.Unload();
  }
}
