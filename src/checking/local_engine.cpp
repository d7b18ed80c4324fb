#include "checking/local_engine.h"

#include <string>

#include "base/files.h"
#include "checking/check_head.h"
#include "checking/main_window.h"
#include "checking/resume_next.h"
#include "checking/verdict.h"
#include "core/big5_file.h"
#include "core/process_control.h"
#include "core/server_access.h"
#include "core/set_file.h"
#include "core/text_utility.h"
#include "protocol/page_code.h"

namespace {

void Launch(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  if (!program.machine.files.FileExists(app.gEngineDir + kEngineName))
    app.gEngineDir = app.gTempDir + "/tolvex/";
  SettleDown(frmMain.machine.loop, frmMain.engineTicks);
  StartHelper(program, app.gEngineDir, kEngineName, {app.gEngineLevel + "," + MakeRunCode(app.gEssayMode)});
  program.machine.loop.DoEvents();
}

bool WaitForEngine(FrmMain& frmMain) {
  frmMain.engineTicks = 0;
  frmMain.tmrEngineResponse.Enabled = true;
  bool isDone = false;
  frmMain.machine.loop.WaitUntil([&] {
    isDone = HasEngineFinished(frmMain.program);
    return isDone || frmMain.engineTicks >= kEngineTimeout;
  });
  frmMain.tmrEngineResponse.Enabled = false;
  return isDone;
}

Steps ShowPageSteps(Program& program, const std::string& pagePath, std::string& page, std::string& code) {
  return {[&] { page = ReadBig5File(program.machine.files, pagePath); },
          [&] { code = protocol::EncodePage(page); }, [&] { program.machine.files.Delete(pagePath); },
          [&] { PostDecodeForm(program, code); }};
}

Steps ReadAnswerSteps(Program& program, EngineAnswer& answer) {
  const auto read = [&program](std::string& field, const char* key) {
    return [&program, &field, key] { field = ReadExchangeKey(program, key); };
  };
  return {read(answer.findMistake, "findMistake"), read(answer.errcode, "errcode"),
          [&] { answer.errcode = EngineReplyCode(answer.errcode); },
          [&] {
            if (!answer.IsRight()) answer.sentence = ReadExchangeKey(program, "sentence");
          },
          read(answer.colSuggestion, "col_suggestion")};
}

}  // namespace

void PassStringToEngineLocal(FrmMain& frmMain) {
  Program& program = frmMain.program;
  std::string sentence;
  if (!AcceptInput(frmMain, sentence)) return;
  KillProcessByName(program.machine.processes, kEngineName);
  if (!OpenCheck(frmMain, sentence)) return StopCheck(frmMain);
  Launch(frmMain);
  if (!WaitForEngine(frmMain)) {
    TellTimeout(frmMain);
    return StopCheck(frmMain);
  }
  EngineAnswer& answer = frmMain.lastAnswer = {};
  std::string page;
  std::string code;
  RunSkippingFailures({[&] { answer.pagePath = ReadExchangeKey(program, "htm4chk"); }});
  if (!program.app.gEssayMode) RunSkippingFailures(ShowPageSteps(program, answer.pagePath, page, code));
  RunSkippingFailures(ReadAnswerSteps(program, answer));
  RunSkippingFailures(VerdictSteps(frmMain, sentence, answer, EngineKind::kLocal));
}
