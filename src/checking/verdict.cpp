#include "checking/verdict.h"

#include "base/day.h"
#include "base/text.h"
#include "checking/main_window.h"
#include "core/message.h"
#include "core/settings.h"
#include "core/text_utility.h"
#include "records/record_db.h"

namespace marovane {

namespace {

constexpr Color kRight = Rgb(153, 204, 0);
constexpr Color kFaulty = Rgb(255, 60, 60);

std::string CodeOf(const protocol::CheckReply& answer) {
  const std::string code = base::Trim(answer.errcode);
  return code.empty() ? "0" : code;
}

void RecordRight(FrmMain& frmMain, const std::string& sentence) {
  frmMain.records.InsertOkSentence({.sId = MakeRecId(frmMain.program),
                                    .sentence = sentence,
                                    .sDate = base::DayOf(frmMain.machine.loop.Now())});
}

void RecordFaulty(FrmMain& frmMain, const protocol::CheckReply& answer) {
  frmMain.records.InsertErrSentence({.id = MakeRecId(frmMain.program),
                                     .sentence = answer.sentence,
                                     .errcode = CodeOf(answer),
                                     .sDate = base::DayOf(frmMain.machine.loop.Now())});
}

bool IsSuggestion(const std::string& list) { return list != "0" && !list.empty(); }

void ShowSuggestions(Program& program, const protocol::CheckReply& answer, EngineKind kind) {
  const auto show = [&program](const char* name, const std::string& list) {
    if (IsSuggestion(list)) program.hall.frmSuggest->ShowSuggest(name, list);
  };
  if (!IsSuggestion(answer.colSuggestion) && !IsSuggestion(answer.synSuggestion)) return;
  program.hall.frmSuggest->AsForm().Show();
  if (kind == EngineKind::kWeb) {
    program.hall.frmSuggest->HideTabs();
    program.machine.loop.DoEvents();
  }
  show("COL", answer.colSuggestion);
  show("SYN", answer.synSuggestion);
}

// The marked parts are every second one.
std::string VerdictInWords(const protocol::CheckReply& answer) {
  if (answer.IsRight()) return "句子正確";
  std::string faults;
  const auto parts = base::Split(answer.sentence, "*");
  for (std::size_t i = 1; i < parts.size(); i += 2) faults += (faults.empty() ? "：" : "、") + parts[i];
  return (answer.findMistake == "2" ? "句子有要留意的地方" : "句子有錯誤") + faults;
}

void CloseProgress(Program& program) {
  program.frmMessage->closeForm();
  program.machine.loop.DoEvents();
}

void GiveWindowBack(FrmMain& frmMain) {
  frmMain.machine.loop.DoEvents();
  frmMain.Enabled = true;
  frmMain.txtFocus.SetFocus();
  frmMain.machine.loop.DoEvents();
}

}  // namespace

Steps VerdictSteps(FrmMain& frmMain, const std::string& sentence, const protocol::CheckReply& answer,
                   EngineKind kind) {
  Program& program = frmMain.program;
  auto& app = program.app;
  Steps steps;
  if (!app.gSentencesBusy && answer.IsRight()) {
    steps.emplace_back([&] { RecordRight(frmMain, sentence); });
  }
  if (!app.gSentencesBusy && !answer.IsRight()) {
    steps.emplace_back([&] { RecordFaulty(frmMain, answer); });
    steps.emplace_back([&] { frmMain.records.TallyMistake(CodeOf(answer)); });
  }
  steps.emplace_back([&] { SetVerdict(app.gVerdict, answer.findMistake); });
  if (!app.gEssayMode) {
    steps.emplace_back([&, kind] { ShowSuggestions(program, answer, kind); });
    steps.emplace_back([&] { WriteNeedSync(program, "Y"); });
    steps.emplace_back([&] { CloseProgress(program); });
  }
  steps.emplace_back(
      [&] { frmMain.ShowVerdict(answer.IsRight() ? kRight : kFaulty, VerdictInWords(answer)); });
  steps.emplace_back([&] { GiveWindowBack(frmMain); });
  // Within an essay the web exchange may have shown its progress box too.
  if (kind == EngineKind::kWeb) steps.emplace_back([&] { CloseProgress(program); });
  return steps;
}

}  // namespace marovane
