// The pop-up menu of the input box.
#pragma once

#include "core/program.h"
#include "platform/controls.h"

namespace marovane {

class FrmMenu : public Form, public TextMenu {
 public:
  explicit FrmMenu(Program& program);

  Form& AsForm() override { return *this; }
  /// Shows the menu at the mouse pointer, until something is chosen or another window becomes active.
  void PopUp() override;
  void Form_Deactivate() override { Hide(); }

  CommandButton mnuTextCopy{*this, "mnuTextCopy"}, mnuTextCut{*this, "mnuTextCut"},
      mnuTextPaste{*this, "mnuTextPaste"};
  PictureBox mnuTextPopup{*this, "mnuTextPopup"};

 private:
  void Choose(const std::function<void(RichTextBox&)>& action);
  void Copy(const RichTextBox& txtInput);

  Program& program_;
};

}  // namespace marovane
