#include "checking/local_engine.h"

#include <string>

#include "checking/check_head.h"
#include "checking/engine_answer.h"
#include "checking/main_window.h"
#include "checking/resume_next.h"
#include "checking/verdict.h"
#include "core/big5_file.h"
#include "core/digest.h"
#include "core/process_control.h"
#include "core/server_access.h"
#include "core/set_file.h"
#include "core/text_utility.h"
#include "platform/files.h"

namespace {

constexpr const char* kEngineName = "tolvex2.exe";

std::string ReadKey(Program& program, const char* key) {
  return ReadWriteSetFile(program.machine.files, program.app.gRegistryFile, "R", key, "");
}

// Turns of the event loop, not a span of time: they let the file system and an engine that is being killed
// settle.
void SettleDown(FrmMain& frmMain) {
  constexpr int kLastRound = 5000;
  for (frmMain.engineTicks = 0; frmMain.engineTicks <= kLastRound; ++frmMain.engineTicks) {
    frmMain.machine.loop.DoEvents();
  }
}

void Launch(FrmMain& frmMain) {
  Program& program = frmMain.program;
  auto& app = program.app;
  if (!program.machine.files.FileExists(app.gEngineDir + kEngineName))
    app.gEngineDir = app.gTempDir + "/tolvex/";
  SettleDown(frmMain);
  StartHelper(program, app.gEngineDir, kEngineName, {app.gEngineLevel + "," + MakeRunCode(app.gEssayMode)});
  program.machine.loop.DoEvents();
}

// The engine has ended and left its page.
bool HasFinished(FrmMain& frmMain) {
  Program& program = frmMain.program;
  if (IsProcessRunning(program.machine.processes, kEngineName)) return false;
  try {
    const std::string page = ReadKey(program, "htm4chk");
    return program.machine.files.FileExists(page);
  } catch (const RunTimeError&) {
    return false;
  }
}

bool WaitForEngine(FrmMain& frmMain) {
  frmMain.engineTicks = 0;
  frmMain.tmrEngineResponse.Enabled = true;
  bool isDone = false;
  frmMain.machine.loop.WaitUntil([&] {
    isDone = HasFinished(frmMain);
    return isDone || frmMain.engineTicks >= kEngineTimeout;
  });
  frmMain.tmrEngineResponse.Enabled = false;
  return isDone;
}

Steps ReadAnswerSteps(Program& program, EngineAnswer& answer, std::string& page, std::string& code) {
  const auto read = [&program](std::string& field, const char* key) {
    return [&program, &field, key] { field = ReadKey(program, key); };
  };
  return {read(answer.pagePath, "htm4chk"),
          [&] { page = ReadBig5File(program.machine.files, answer.pagePath); },
          [&] { code = EncodeForServer(page); },
          [&] { program.machine.files.Delete(answer.pagePath); },
          [&] { PostDecodeForm(program, code); },
          read(answer.findMistake, "findMistake"),
          read(answer.errcode, "errcode"),
          [&] { answer.errcode = EngineReplyCode(answer.errcode); },
          [&] {
            if (!answer.IsRight()) answer.sentence = ReadKey(program, "sentence");
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
  RunSkippingFailures(ReadAnswerSteps(program, answer, page, code));
  RunSkippingFailures(VerdictSteps(frmMain, sentence, answer, EngineKind::kLocal));
}
