// What most windows have in common: a background, a close image, a row of buttons, and how they come and go.
#pragma once

#include <string>
#include <utility>

#include "core/program.h"
#include "core/window_shell.h"
#include "platform/controls.h"
#include "platform/form.h"

namespace marovane {

/// A window that is as large as its background and is dragged by it, fades in in the middle of the screen,
/// and fades out when it is closed.
class ShellWindow : public Form {
 public:
  void Form_Load() override;
  void Form_Unload() override;
  /// Starts the fade-out that ends in unloading the window.
  void closeForm();
  /// The user closes the window.
  virtual void imgClose_Click() { closeForm(); }

  PictureBox picBG{*this, "picBG"}, imgClose{*this, "imgClose"};

 protected:
  /// @param isOpen the shared field that is true while the window is open, if there is one
  ShellWindow(Program& program, std::string name, bool AppState::*isOpen = nullptr);

  Program& program_;
  Fade fade_;
  ShellButtons shell_;

 private:
  void SetOpen(bool isOpen);

  bool AppState::*isOpen_;
};

/// The same with a row of N buttons.
template <int N>
class ButtonWindow : public ShellWindow {
 public:
  /// A button was clicked; they count from 0.
  virtual void picButtons_Click(int index) = 0;

  ControlArray<PictureBox, N> picButtons{*this, "picButtons"}, imgBtnOff{*this, "imgBtnOff"},
      imgBtnOver{*this, "imgBtnOver"}, imgBtnOn{*this, "imgBtnOn"};

 protected:
  ButtonWindow(Program& program, std::string name, bool AppState::*isOpen = nullptr)
      : ShellWindow(program, std::move(name), isOpen) {
    shell_.Add(picButtons, imgBtnOff, imgBtnOver, imgBtnOn);
    picButtons.On(&Control::Click, [this](int index) { picButtons_Click(index); });
  }
};

}  // namespace marovane
