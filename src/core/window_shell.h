// What all windows share: fading, centring.
#pragma once

#include <functional>

#include "platform/timer.h"

namespace marovane {

class Form;

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
  int Alpha() const { return alpha_; }

  Timer tmrTransparentForm;
  std::function<void()> onGone;  ///< in place of the unloading

 private:
  void Tick();
  void End();

  Form& form_;
  int alpha_ = 0;
  int step_ = kInStep;
  int target_ = kTarget;
};

}  // namespace marovane
