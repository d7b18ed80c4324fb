// What all windows share: fading, centring, and image buttons: what they look like under the mouse.
#pragma once

#include <functional>
#include <vector>

#include "platform/controls.h"
#include "platform/timer.h"

namespace marovane {

/// The place of a window that has to vanish for a while.
inline constexpr int kAway = -20000;

/// Gives a window its opacity, 0 to 255.
void SkinForm(Form& form, int alpha);
void CenterForm(Form& form);

/// The fade of a window: its alpha, step and target, and the timer `tmrTransparentForm`, which runs until the
/// end has been reached. During a request only the alpha moves; the end comes after it.
class Fade {
 public:
  static constexpr int kTarget = 240;
  static constexpr int kInStep = 30;
  static constexpr int kOutStep = -20;

  explicit Fade(Form& form);

  /// From nothing to the target.
  void In();
  /// At once at the target.
  void ShowAtOnce();
  /// To nothing; then the window is unloaded.
  void Out();

  Timer tmrTransparentForm;
  std::function<void()> onGone;  ///< in place of the unloading

 private:
  void Tick();
  void End();

  Form& form_;
  int alpha_ = 0;
  int step_ = kInStep;
};

/// Gives a window's buttons their hover pictures, its close image likewise, and lets its background be
/// dragged. The windows set what a click does.
class ShellButtons {
 public:
  ShellButtons(Control& background, PictureBox& imgClose);

  /// A button and the controls that hold its pictures: at rest, under the mouse, pressed.
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
