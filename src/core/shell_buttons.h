// The image buttons of a window: what they look like under the mouse.
#pragma once

#include <vector>

#include "platform/controls.h"

namespace marovane {

/// Gives a window's buttons their hover pictures, its close image likewise, and lets its background be
/// dragged. The windows set what a click does.
class ShellButtons {
 public:
  ShellButtons(Control& background, PictureBox& imgClose);

  /// A button and the controls that bear its pictures: at rest, under the mouse, pressed.
  void Add(PictureBox& button, const PictureBox& off, const PictureBox& over, const PictureBox& on);
  template <int N>
  void Add(ControlArray<PictureBox, N>& buttons, ControlArray<PictureBox, N>& off,
           ControlArray<PictureBox, N>& over, ControlArray<PictureBox, N>& on) {
    for (int i = 0; i < N; ++i) Add(buttons(i), off(i), over(i), on(i));
  }

  /// All buttons at rest.
  void picButtonsResetImage();
  /// The hand cursor on everything that can be clicked.
  void SetMouseIconHand();

 private:
  struct Button {
    PictureBox& control;
    const PictureBox& off;
  };

  PictureBox& imgClose_;
  std::vector<Button> buttons_;
};

}  // namespace marovane
