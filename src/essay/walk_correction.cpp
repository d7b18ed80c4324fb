// The part of the walk in which the user corrects a sentence.
#include "base/text.h"
#include "core/input_box.h"
#include "essay/text_rules.h"
#include "essay/walk_steps.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "protocol/sentences.h"

namespace marovane {

namespace essay_walk {
namespace {

constexpr const char* kBrokenOff = "#EDIT_BREAK#";
constexpr int kClearButton = 9;
constexpr int kBreakButton = 10;

void ShowSentenceInMain(EssayRoom& room) {
  MainWindow& frmMain = *room.program.hall.frmMain;
  RichTextBox& box = frmMain.InputBox();
  PutSentence(box, room.program.app.gEssayCurSentence);
  frmMain.AsForm().Left = room.frmEssay->mMainLeft;
  frmMain.MenuButton(kClearButton).Visible = false;
  frmMain.MenuButton(kBreakButton).Visible = true;
  box.SetFocus();
}

void HideMain(EssayRoom& room) {
  MainWindow& frmMain = *room.program.hall.frmMain;
  frmMain.MenuButton(kClearButton).Visible = true;
  frmMain.MenuButton(kBreakButton).Visible = false;
  frmMain.AsForm().Left = kAway;
}

std::string EssayWith(const AppState& app, const std::string& correction) {
  return base::Replace(app.gEssayCurrent, app.gEssayCurSentence, correction);
}

// A correction must leave a text that can still be walked to its end.
bool IsUsable(EssayRoom& room, const std::string& correction) {
  const Message* refusal = RefusalOfCorrected(EssayWith(room.program.app, correction));
  if (refusal == nullptr) return true;
  AskInPlace(room, *refusal);
  return false;
}

// "" when somebody has emptied gVerdict.
std::string AwaitCorrection(EssayRoom& room) {
  auto& verdict = room.program.app.gVerdict;
  do {
    verdict = kAwaitsCorrection;
    room.program.machine.loop.WaitUntil([&verdict] { return verdict != kAwaitsCorrection; });
  } while (verdict != kBrokenOff && !verdict.empty() && !IsUsable(room, verdict));
  return verdict;
}

// Every equal sentence of the essay is corrected with it.
void Merge(EssayRoom& room, const std::string& correction) {
  auto& app = room.program.app;
  app.gEssayCurrent = EssayWith(app, correction);
  app.gEssaySentence = protocol::RunningText(app.gEssayCurrent);
  FrmEssay& frmEssay = *room.frmEssay;
  CenterForm(frmEssay);
  frmEssay.Show();
  frmEssay.txtInput.SetFocus();
  frmEssay.txtInput.Text = app.gEssaySentence;
  StyleAllText(frmEssay.txtInput, kUnread);
  StyleText(frmEssay.txtInput, 0, std::max(app.gEssaySentenceNo - 1, 0), kPassed);
  app.gEssayNewSentence = false;
}

}  // namespace

Next CorrectSentence(EssayRoom& room) {
  ShowSentenceInMain(room);
  const std::string correction = AwaitCorrection(room);
  HideMain(room);
  if (correction == kBrokenOff) room.frmEssay->mStopRequested = true;
  if (room.frmEssay->mStopRequested) return Next::kStop;
  if (correction.empty()) return Next::kSentence;
  Merge(room, correction);
  return Next::kSameAgain;
}

}  // namespace essay_walk

}  // namespace marovane
