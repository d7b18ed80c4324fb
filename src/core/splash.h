// The window that greets while the program comes up.
#pragma once

#include "core/program.h"
#include "core/window_shell.h"
#include "platform/controls.h"

namespace marovane {

class FrmSplash : public Form, public Splash {
 public:
  explicit FrmSplash(Program& program);

  Form& AsForm() override { return *this; }
  void StartClosing() override;

  void Form_Load() override;
  void closeForm();

  PictureBox picBG{*this, "picBG"}, picProgress{*this, "picProgress"},
      picProgressInner{*this, "picProgressInner"}, imgProgressFlash{*this, "imgProgressFlash"};
  Label lblOnProgress{*this, "lblOnProgress"}, lblVersion{*this, "lblVersion"};
  CommandButton cmdOK{*this, "cmdOK"};
  Timer tmrProgressFlash, tmrHide;

 private:
  void UploadSilently();
  void Leave();

  Program& program_;
  Fade fade_;
};

}  // namespace marovane
