// The menu of the main window.
#include "base/files.h"
#include "checking/main_window.h"
#include "core/key_value_file.h"
#include "core/message.h"

namespace marovane {

void FrmMain::imgMenu_Click(int index) {
  auto& app = program.app;
  auto& hall = program.hall;
  switch (index) {
    case 0:
      return OpenDaySentences();
    case 1:
      return OpenFromMenu(app.gOpenDiary, hall.frmDiary);
    case 2:
      return hall.frmCollocation->AsForm().Show();
    case 3:
      return OpenErrorStatistics();
    case 4:
      return OpenEssayTopics();
    case 5:
      return OpenFeedback();
    case 6:
      return OpenFromMenu(app.gOpenSetup, hall.frmSetup);
    case 7:
      hall.frmBrowser->GoNavigate(app.gWebSiteRoot + "_htmls/MRV_manual.htm", 1);
      return;
    case 8:
      return AskToLeave();
    case 9:
      txtInput.Text = "";
      ForgetVerdict();
      txtInput.SetFocus();
      return;
    case kBreakButton:
      app.gVerdict = "#EDIT_BREAK#";
      return;
    default:
      return;
  }
}

// A window that is already open is loaded anew.
void FrmMain::OpenFromMenu(bool isOpen, const Door<HallWindow>& door) {
  if (isOpen) door->AsForm().Unload();
  door->AsForm().Show();
}

void FrmMain::OpenDaySentences() {
  const auto& door = program.hall.frmSentences;
  door->ShowDaySentences("OKONLY", "");
  door->AsForm().Show();
}

void FrmMain::OpenErrorStatistics() {
  const auto& door = program.hall.frmErrList;
  if (program.app.gOpenErrList) door->AsForm().Unload();
  door->GetHtmlListAllErrType();
  door->AsForm().Show();
}

void FrmMain::OpenEssayTopics() {
  auto& app = program.app;
  if (app.gEssayReportShown && !Confirm(program, Message::kNewEssay)) return;
  app.gEssayStartRequested = app.gEdition != "XQD";
  program.hall.frmEssayInputEdu->AsForm().Show();
}

void FrmMain::OpenFeedback() {
  const std::string sentence =
      ReadWriteSetFile(machine.files, program.app.gRegistryFile, "R", "sentence", "");
  if (sentence == "0" || sentence.empty()) return ShowMessage(program, Message::kNothingToReport);
  program.hall.frmFeedback->AsForm().Show();
}

void FrmMain::AskToLeave() {
  if (Confirm(program, Message::kLeaveProgram)) CloseAppProcdure();
}

}  // namespace marovane
