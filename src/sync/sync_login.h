// Asks for an older account of the learner, whose records are to be merged into the present one.
#pragma once

#include <string>

#include "core/shell_window.h"

namespace marovane {

/// The answer is in gMsgResult, "OK" or "CANCEL"; after "OK" gUploadAccountNo is the older account.
class FrmSyncLogin : public ShellWindow, public HallWindow {
 public:
  explicit FrmSyncLogin(Program& program);

  Form& AsForm() override { return *this; }
  void Form_Load() override;
  void imgClose_Click() override { cmdButtons_Click(1); }

  TextBox txtPno{*this, "txtPno"}, txtPass{*this, "txtPass"};
  ControlArray<CommandButton, 2> cmdButtons{*this, "cmdButtons"};
  ControlArray<Label, 1> lblMessage{*this, "lblMessage"};
  ControlArray<Label, 3> lblS{*this, "lblS"};

 private:
  void SetDefaultValue();
  void cmdButtons_Click(int index);
  void Accept();
};

}  // namespace marovane
