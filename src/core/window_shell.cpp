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
  alpha_ = kTarget;
  step_ = kInStep;
  SkinForm(form_, alpha_);
}

void Fade::Out() {
  step_ = kOutStep;
  tmrTransparentForm.Enabled = true;
}

void Fade::Tick() {
  alpha_ = std::clamp(alpha_ + step_, 0, kTarget);
  SkinForm(form_, alpha_);
  // During a request the timer ticks on, so that the end comes after it.
  const bool isOver = alpha_ == 0 || alpha_ == kTarget;
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

ShellButtons::ShellButtons(Control& background, PictureBox& imgClose) : imgClose_(imgClose) {
  background.MouseMove = [this] { picButtonsResetImage(); };
  background.MouseDown = [&background](int button) {
    if (button == kLeftButton) background.Owner().machine.windows.StartDrag(background.Owner());
  };
  imgClose.MouseMove = [this] {
    picButtonsResetImage();
    imgClose_.Picture = "imgExit_1";
  };
  imgClose.MouseDown = [this](int) { imgClose_.Picture = "imgExit_2"; };
  imgClose.Picture = "imgExit_0";
}

void ShellButtons::Add(PictureBox& button, const PictureBox& off, const PictureBox& over,
                       const PictureBox& on) {
  buttons_.push_back({button, off});
  button.MouseMove = [this, &button, &over] {
    picButtonsResetImage();
    button.Picture = over.Picture;
  };
  button.MouseDown = [&button, &on](int) { button.Picture = on.Picture; };
  button.MouseUp = [&button, &off](int) { button.Picture = off.Picture; };
  button.Picture = off.Picture;
}

void ShellButtons::picButtonsResetImage() {
  for (const auto& button : buttons_) button.control.Picture = button.off.Picture;
  imgClose_.Picture = "imgExit_0";
}

void ShellButtons::SetMouseIconHand() {
  for (const auto& button : buttons_) button.control.HandCursor = true;
  imgClose_.HandCursor = true;
}

}  // namespace marovane
