#include "checking/sentence_check.h"

#include "base/files.h"
#include "checking/main_window.h"
#include "checking/verdict.h"
#include "core/engine_exchange.h"
#include "core/message.h"
#include "core/process_control.h"
#include "core/resume_next.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/typed_text.h"
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
  program.proof.TellRefusal();
  program.hall.frmPassword->AsForm().Show();
  return false;
}

// Shows why there is no verdict, and keeps it for whoever asks later.
void Refuse(FrmMain& frmMain, const Message& message, const std::string& detail = "") {
  Program& program = frmMain.program;
  frmMain.stopReason = std::string(message.text) + detail;
  program.app.gProgressDetail = detail;
  ShowMessage(program, message);
}

// Reads the input. Nothing when no engine accepts it: then a message was shown, and nothing has been written.
std::optional<TypedSentence> AcceptInput(FrmMain& frmMain) {
  frmMain.lastAnswer = {};
  frmMain.stopReason.clear();
  TypedSentence sentence(frmMain.txtInput.Text());
  const auto refused = sentence.Refused();
  if (refused.empty() && sentence.Plain().size() <= protocol::kLongestSentence) return sentence;
  if (refused.empty()) {
    Refuse(frmMain, Message::kSentenceTooLong);
  } else {
    Refuse(frmMain, Message::kBadSigns, refused);
  }
  frmMain.txtInput.SetFocus();
  return std::nullopt;
}

// False when the check has to wait for the password.
bool BeginCheck(FrmMain& frmMain, const TypedSentence& sentence) {
  Program& program = frmMain.program;
  frmMain.Enabled = false;
  if (!program.app.gEssayMode) {
    // An essay that is being typed keeps its topic.
    if (!program.app.gOpenEssay) ClearEssay(program.app);
    ShowProgress(program);
    if (!PassPasswordGate(frmMain)) return false;
  }
  WriteQuestion(program, sentence.Plain());
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

// The learner has broken off, the engine took too long, or it has refused.
void GiveUp(FrmMain& frmMain, const EngineClient& engine) {
  if (engine.IsBrokenOff()) {
    frmMain.stopReason = "已中斷檢查";
    frmMain.SayOutcome(frmMain.stopReason);
  } else if (engine.Refusal().empty()) {
    Refuse(frmMain, Message::kEngineTimeout);
  } else {
    Refuse(frmMain, Message::kRefusedByEngine, engine.Refusal());
  }
  StopCheck(frmMain);
}

bool RunEngine(FrmMain& frmMain, EngineClient& engine) {
  Program& program = frmMain.program;
  auto& app = program.app;
  if (!program.machine.files.FileExists(app.gEngineDir + kEngineName))
    app.gEngineDir = app.gTempDir + "/tolvex/";
  return engine.RunLocal(kEngineName, app.gEngineLevel + "," + MakeRunCode(app.gEssayMode),
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
                .showAddress = [&program] { ShowProgress(program); }});
}

void PassStringToEngineWeb(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  const auto sentence = AcceptInput(frmMain);
  if (!sentence) return;
  if (!BeginCheck(frmMain, *sentence)) return StopCheck(frmMain);
  app.gLastInput.clear();
  EngineClient engine = EngineFor(frmMain);
  const auto reply =
      engine.AskWeb(protocol::page::kCheckSentence,
                    protocol::EncodeCheck(app.gAccountNo, MakeRunCode(app.gEssayMode), sentence->Plain()));
  if (!reply) return GiveUp(frmMain, engine);
  protocol::CheckReply& answer = frmMain.lastAnswer = protocol::ParseCheckReply(*reply);
  answer.sentence = sentence->WithMarksOf(answer.sentence);
  if (!app.gEssayMode) {
    program.hall.frmBrowser->GoNavigate(app.gWebEngineRoot + answer.pagePath, 2);
  }
  const std::string written = sentence->Written();
  RunInOrder(VerdictSteps(frmMain, written, answer, EngineKind::kWeb));
}

void PassStringToEngineLocal(FrmMain& frmMain) {
  Program& program = frmMain.program;
  const auto sentence = AcceptInput(frmMain);
  if (!sentence) return;
  KillProcessByName(program.machine.processes, kEngineName, program.app.gEngineDir);
  if (!BeginCheck(frmMain, *sentence)) return StopCheck(frmMain);
  EngineClient engine = EngineFor(frmMain);
  if (!RunEngine(frmMain, engine)) return GiveUp(frmMain, engine);
  protocol::CheckReply& answer = frmMain.lastAnswer;
  std::string page;
  std::string code;
  RunSkippingFailures({[&] { answer.pagePath = ReadPagePath(program); }});
  if (!program.app.gEssayMode) RunSkippingFailures(ShowPageSteps(program, answer.pagePath, page, code));
  RunSkippingFailures(ReadAnswerSteps(program, answer));
  answer.sentence = sentence->WithMarksOf(answer.sentence);
  const std::string written = sentence->Written();
  RunSkippingFailures(VerdictSteps(frmMain, written, answer, EngineKind::kLocal));
}

}  // namespace marovane
