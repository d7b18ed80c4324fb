#include "checking/sentence_check.h"

#include "base/files.h"
#include "checking/main_window.h"
#include "checking/verdict.h"
#include "core/engine_exchange.h"
#include "core/input_box.h"
#include "core/message.h"
#include "core/process_control.h"
#include "core/resume_next.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/text_utility.h"
#include "protocol/page_code.h"
#include "protocol/pages.h"

namespace marovane {

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

void ShowProgress(Program& program) {
  FrmMessage::ProgressMsgBox(program, Progress::kChecking);
  program.machine.loop.DoEvents();
}

// False when the check has to wait for the password. The prompt then starts it again.
bool PassPasswordGate(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  if (app.gEdition != "MRV") return true;
  app.gAccountNo = ReadSetup(program, "Pno");
  if (!app.gAccountPassword.empty()) return true;
  program.hall.frmPassword->AsForm().Show();
  return false;
}

// Normalises the input. False when it holds a character that no engine accepts: then a message was shown, and
// nothing has been written.
// @param sentence the text to check, not trimmed
bool AcceptInput(FrmMain& frmMain, std::string& sentence) {
  sentence = NormaliseInput(frmMain.txtInput);
  if (IsPlainAscii(sentence)) return true;
  ShowMessage(frmMain.program, Message::kBadSigns);
  frmMain.txtInput.SetFocus();
  return false;
}

// False when the check has to wait for the password.
bool BeginCheck(FrmMain& frmMain, const std::string& sentence) {
  Program& program = frmMain.program;
  frmMain.Enabled = false;
  if (!program.app.gEssayMode) {
    ClearEssay(program.app);
    ShowProgress(program);
    if (!PassPasswordGate(frmMain)) return false;
  }
  WriteQuestion(program, sentence);
  return true;
}

// Ends a check without an answer.
void StopCheck(FrmMain& frmMain) {
  Program& program = frmMain.program;
  program.app.gVerdict = "STOP";
  if (!program.app.gEssayMode) {
    program.frmMessage->closeForm();
    program.machine.loop.DoEvents();
  }
  frmMain.Enabled = true;
}

// The engine took too long.
void GiveUp(FrmMain& frmMain) {
  ShowMessage(frmMain.program, Message::kEngineTimeout);
  StopCheck(frmMain);
}

bool RunEngine(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  if (!program.machine.files.FileExists(app.gEngineDir + kEngineName))
    app.gEngineDir = app.gTempDir + "/tolvex/";
  return EngineFor(frmMain).RunLocal(kEngineName, app.gEngineLevel + "," + MakeRunCode(app.gEssayMode),
                                     [&program] { return HasResultPage(program); });
}

Steps ShowPageSteps(Program& program, const std::string& pagePath, std::string& page, std::string& code) {
  return {[&] { page = ReadBig5File(program.machine.files, pagePath); },
          [&] { code = protocol::EncodePage(page); }, [&] { program.machine.files.Delete(pagePath); },
          [&] { PostDecodeForm(program, code); }};
}

}  // namespace

EngineClient EngineFor(FrmMain& frmMain) {
  Program& program = frmMain.program;
  return EngineClient(
      program, {.wantsMoreAttempts = [&program] { return Confirm(program, Message::kNoEngineAddress); },
                .showAddress = [&program] { ShowProgress(program); },
                .reportsBrokenTransfer = true});
}

void PassStringToEngineWeb(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  std::string sentence;
  if (!AcceptInput(frmMain, sentence)) return;
  if (!BeginCheck(frmMain, sentence)) return StopCheck(frmMain);
  app.gLastInput.clear();
  const auto reply =
      EngineFor(frmMain).AskWeb(protocol::page::kCheckSentence,
                                protocol::EncodeCheck(app.gAccountNo, MakeRunCode(app.gEssayMode), sentence));
  if (!reply) return GiveUp(frmMain);
  const protocol::CheckReply& answer = frmMain.lastAnswer = protocol::ParseCheckReply(*reply);
  if (!app.gEssayMode) {
    program.hall.frmBrowser->GoNavigate(app.gWebEngineRoot + answer.pagePath, 2);
  }
  RunInOrder(VerdictSteps(frmMain, sentence, answer, EngineKind::kWeb));
}

void PassStringToEngineLocal(FrmMain& frmMain) {
  Program& program = frmMain.program;
  std::string sentence;
  if (!AcceptInput(frmMain, sentence)) return;
  KillProcessByName(program.machine.processes, kEngineName);
  if (!BeginCheck(frmMain, sentence)) return StopCheck(frmMain);
  if (!RunEngine(frmMain)) return GiveUp(frmMain);
  protocol::CheckReply& answer = frmMain.lastAnswer = {};
  std::string page;
  std::string code;
  RunSkippingFailures({[&] { answer.pagePath = ReadPagePath(program); }});
  if (!program.app.gEssayMode) RunSkippingFailures(ShowPageSteps(program, answer.pagePath, page, code));
  RunSkippingFailures(ReadAnswerSteps(program, answer));
  RunSkippingFailures(VerdictSteps(frmMain, sentence, answer, EngineKind::kLocal));
}

}  // namespace marovane
