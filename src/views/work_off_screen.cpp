#include "views/work_off_screen.h"

#include "core/message.h"
#include "core/program.h"
#include "platform/form.h"
#include "platform/machine.h"

namespace marovane {

WorkOffScreen::WorkOffScreen(Program& program, const Progress& progress) : program_(program) {
  constexpr int kOffScreen = -20000;
  Form& frmMain = program_.hall.frmMain->AsForm();
  left_ = frmMain.Left;
  frmMain.Left = kOffScreen;
  program_.machine.loop.DoEvents();
  FrmMessage::ProgressMsgBox(program_, progress);
  program_.machine.loop.DoEvents();
}

WorkOffScreen::~WorkOffScreen() {
  if (!isFinished_) PutMainBack();
}

void WorkOffScreen::Finish() {
  program_.frmMessage->closeForm();
  program_.machine.loop.DoEvents();
  PutMainBack();
  program_.machine.loop.DoEvents();
}

void WorkOffScreen::PutMainBack() {
  isFinished_ = true;
  program_.hall.frmMain->AsForm().Left = left_;
}

}  // namespace marovane
