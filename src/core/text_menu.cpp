#include "core/text_menu.h"

#include <algorithm>

#include "platform/desktop.h"
#include "platform/machine.h"
#include "platform/window_system.h"

namespace marovane {

FrmMenu::FrmMenu(Program& program) : Form(program.machine, "frmMenu"), program_(program) {
  mnuTextCopy.Caption = "複製";
  mnuTextCut.Caption = "剪下";
  mnuTextPaste.Caption = "貼上";
  mnuTextCopy.Click = [this] { Choose([this](RichTextBox& txtInput) { Copy(txtInput); }); };
  mnuTextCut.Click = [this] {
    Choose([this](RichTextBox& txtInput) {
      Copy(txtInput);
      txtInput.ReplaceSelection("");
    });
  };
  mnuTextPaste.Click = [this] {
    Choose([this](RichTextBox& txtInput) { txtInput.ReplaceSelection(machine.desktop.ClipboardText()); });
  };
  QueryClose = [this] { Hide(); };
}

void FrmMenu::PopUp() {
  const Point pointer = machine.windows.Cursor();
  const Area screen = machine.windows.Screen();
  Left = std::min(pointer.x, screen.left + screen.width - Width);
  Top = std::min(pointer.y, screen.top + screen.height - Height);
  TopMost = true;
  Show();
}

void FrmMenu::Choose(const std::function<void(RichTextBox&)>& action) {
  RichTextBox& txtInput = program_.hall.frmMain->InputBox();
  Hide();
  action(txtInput);
  txtInput.SetFocus();
}

void FrmMenu::Copy(const RichTextBox& txtInput) { machine.desktop.SetClipboardText(txtInput.SelText()); }

}  // namespace marovane
