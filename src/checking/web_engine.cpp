#include "checking/web_engine.h"

#include "checking/check_head.h"
#include "checking/main_window.h"
#include "checking/resume_next.h"
#include "checking/verdict.h"
#include "core/message.h"
#include "core/server_access.h"

namespace {

void ShowEngineAddress(Program& program) {
  if (!program.app.gDetailMessage) return;
  program.app.gProgressDetail = program.app.gWebEngineRoot;
  FrmMessage::ProgressMsgBox(program, Progress::kChecking);
  program.machine.loop.DoEvents();
}

std::optional<EngineAnswer> AskOnce(Program& program, const std::string& runCode,
                                    const std::string& sentence) {
  ShowEngineAddress(program);
  return ParseEngineReply(PostForm(program, program.app.gWebEngineRoot + "p_passWebEngine.asp",
                                   EngineRequestBody(program.app.gAccountNo, runCode, sentence)));
}

// Nothing more to do in this second: who is not there now will hardly be in the next moment.
void AwaitTick(FrmMain& frmMain) {
  const int now = frmMain.engineTicks;
  frmMain.machine.loop.WaitUntil([&frmMain, now] { return frmMain.engineTicks != now; });
}

// The request is repeated as often as the server answers anything else.
std::optional<EngineAnswer> AskUntilAnswered(FrmMain& frmMain, const std::string& sentence) {
  Program& program = frmMain.program;
  const std::string runCode = MakeRunCode(program.app.gEssayMode);
  frmMain.engineTicks = 0;
  frmMain.tmrEngineResponse.Enabled = true;
  while (true) {
    const bool isOnline = IsWebEngineOnline(program, true);
    auto answer = isOnline ? AskOnce(program, runCode, sentence) : std::nullopt;
    if (answer) return answer;
    if (frmMain.engineTicks >= kEngineTimeout) return std::nullopt;
    if (!isOnline) AwaitTick(frmMain);
    frmMain.machine.loop.DoEvents();
  }
}

}  // namespace

void PassStringToEngineWeb(FrmMain& frmMain) {
  Program& program = frmMain.program;
  std::string sentence;
  if (!AcceptInput(frmMain, sentence)) return;
  if (!OpenCheck(frmMain, sentence)) return StopCheck(frmMain);
  program.app.gLastInput.clear();
  auto answer = AskUntilAnswered(frmMain, sentence);
  if (!answer) {
    frmMain.tmrEngineResponse.Enabled = false;
    TellTimeout(frmMain);
    return StopCheck(frmMain);
  }
  if (!program.app.gEssayMode) {
    program.hall.frmBrowser->GoNavigate(program.app.gWebEngineRoot + answer->pagePath, 2);
  }
  frmMain.lastAnswer = std::move(*answer);
  RunInOrder(VerdictSteps(frmMain, sentence, frmMain.lastAnswer, EngineKind::kWeb));
}
