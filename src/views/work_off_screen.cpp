#include "views/work_off_screen.h"

#include "core/message.h"
#include "core/program.h"
#include "core/window_shell.h"
#include "platform/form.h"
#include "platform/machine.h"

namespace marovane {

void WorkOffScreen(Program& program, const Progress& progress, const std::function<void()>& work) {
  EventLoop& loop = program.machine.loop;
  const auto moveMain = [&program](int left) { program.hall.frmMain->AsForm().Left = left; };
  const int left = program.hall.frmMain->AsForm().Left;
  // A window that had moved it away brings it back itself, and may have done so meanwhile.
  const auto bringBack = [&] {
    if (left > kAway) moveMain(left);
  };
  moveMain(kAway);
  try {
    loop.DoEvents();
    FrmMessage::ProgressMsgBox(program, progress);
    loop.DoEvents();
    work();
    program.frmMessage->closeForm();
    loop.DoEvents();
  } catch (...) {
    bringBack();
    throw;
  }
  bringBack();
  loop.DoEvents();
}

}  // namespace marovane
