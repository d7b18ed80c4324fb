// Asks for the title of a new topic of the learner's own.
#pragma once

#include "core/shell_buttons.h"
#include "core/window_shell.h"
#include "core/windows.h"
#include "platform/controls.h"
#include "platform/form.h"

namespace marovane {

struct EssayRoom;

class FrmEssayInputForm : public Form, public HallWindow {
 public:
  explicit FrmEssayInputForm(EssayRoom& room);

  Form& AsForm() override { return *this; }
  void Form_Load() override;
  void Form_Unload() override;
  /// Button 0 starts the essay, 1 gives up.
  void picButtons_Click(int index);

  TextBox txtInput{*this, "txtInput"};
  ControlArray<PictureBox, 2> picButtons{*this, "picButtons"}, imgBtnOff{*this, "imgBtnOff"},
      imgBtnOver{*this, "imgBtnOver"}, imgBtnOn{*this, "imgBtnOn"};
  PictureBox picBG{*this, "picBG"}, imgClose{*this, "imgClose"};

 private:
  EssayRoom& room_;
  Fade fade_;
  ShellButtons shell_;
};

}  // namespace marovane
