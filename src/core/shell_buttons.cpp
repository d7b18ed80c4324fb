#include "core/shell_buttons.h"

#include "platform/form.h"
#include "platform/machine.h"
#include "platform/window_system.h"

namespace marovane {

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
