#include "core/shell_window.h"

namespace marovane {

ShellWindow::ShellWindow(Program& program, std::string name, bool AppState::*isOpen)
    : Form(program.machine, std::move(name)),
      program_(program),
      fade_(*this),
      shell_(picBG, imgClose),
      isOpen_(isOpen) {
  imgClose.Click = [this] { imgClose_Click(); };
  QueryClose = [this] { imgClose_Click(); };
}

void ShellWindow::Form_Load() {
  SetOpen(true);
  Width = picBG.Width;
  Height = picBG.Height;
  CenterForm(*this);
  shell_.SetMouseIconHand();
  fade_.In();
}

void ShellWindow::Form_Unload() { SetOpen(false); }

void ShellWindow::closeForm() {
  SetOpen(false);
  fade_.Out();
}

void ShellWindow::SetOpen(bool isOpen) {
  if (isOpen_ != nullptr) program_.app.*isOpen_ = isOpen;
}

}  // namespace marovane
