#include "checking/check_head.h"

#include "checking/main_window.h"
#include "core/message.h"
#include "core/set_file.h"
#include "core/settings.h"
#include "core/text_utility.h"

namespace {

void ClearEssay(AppState& app) {
  app.gEssayId.clear();
  app.gEssayWorkId.clear();
  app.gEssayQuiz.clear();
  app.gEssayOriginal.clear();
  app.gEssayCurrent.clear();
  app.gEssaySentence.clear();
  app.gEssayCurSentence.clear();
  app.gEssaySentenceNo = 1;
  app.gEssayFinished = false;
}

// False when the check has to wait for the password. The prompt starts it anew.
bool PassPasswordGate(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  if (app.gEdition != "MRV") return true;
  app.gAccountNo = ReadSetup(program, "Pno");
  if (!app.gAccountPassword.empty()) return true;
  program.hall.frmPassword->AsForm().Show();
  return false;
}

}  // namespace

bool AcceptInput(FrmMain& frmMain, std::string& sentence) {
  frmMain.txtInput.Text = WithPlainSigns(frmMain.txtInput.Text());
  sentence = frmMain.txtInput.Text;
  if (IsPlainAscii(sentence)) return true;
  ShowMessage(frmMain.program, Message::kBadSigns);
  frmMain.txtInput.SetFocus();
  return false;
}

bool OpenCheck(FrmMain& frmMain, const std::string& sentence) {
  Program& program = frmMain.program;
  auto& app = program.app;
  frmMain.Enabled = false;
  if (!app.gEssayMode) {
    ClearEssay(app);
    FrmMessage::ProgressMsgBox(program, Progress::kChecking);
    program.machine.loop.DoEvents();
    if (!PassPasswordGate(frmMain)) return false;
  }
  ResetRegistrySet(program.machine.files, app.gRegistryFile, "RESET");
  ReadWriteSetFile(program.machine.files, app.gRegistryFile, "W", "sentence", sentence);
  return true;
}

void StopCheck(FrmMain& frmMain) {
  Program& program = frmMain.program;
  program.app.gVerdict = "STOP";
  if (!program.app.gEssayMode) {
    program.frmMessage->closeForm();
    program.machine.loop.DoEvents();
  }
  frmMain.Enabled = true;
}

void TellTimeout(FrmMain& frmMain) { ShowMessage(frmMain.program, Message::kEngineTimeout); }
