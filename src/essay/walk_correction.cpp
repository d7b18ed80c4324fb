// The part of the walk in which the user corrects a sentence.
#include "base/text.h"
#include "core/input_box.h"
#include "core/typed_text.h"
#include "core/window_shell.h"
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

void ShowSentenceInMain(EssayContext& context) {
  MainWindow& frmMain = *context.program.hall.frmMain;
  RichTextBox& box = frmMain.InputBox();
  PutSentence(box, context.program.app.gEssayCurSentence);
  frmMain.AsForm().Left = context.frmEssay->mMainLeft;
  frmMain.MenuButton(kClearButton).Visible = false;
  frmMain.MenuButton(kBreakButton).Visible = true;
  box.SetFocus();
}

void HideMain(EssayContext& context) {
  RestoreMenu(context);
  context.program.hall.frmMain->AsForm().Left = kAway;
}

std::string EssayWith(const AppState& app, const std::string& correction) {
  return base::Replace(app.gEssayCurrent, app.gEssayCurSentence, correction);
}

// A correction must leave a text that can still be walked to its end.
bool IsUsable(EssayContext& context, const std::string& correction) {
  const Message* refusal = RefusalOfCorrected(EssayWith(context.program.app, correction));
  if (refusal == nullptr) return true;
  AskInPlace(context, *refusal);
  return false;
}

// "" when somebody has emptied gVerdict.
std::string AwaitCorrection(EssayContext& context) {
  auto& verdict = context.program.app.gVerdict;
  do {
    verdict = kAwaitsCorrection;
    Await(context, [&verdict] { return verdict != kAwaitsCorrection; });
    verdict = JoinWrappedLines(TidyTyped(verdict));
  } while (verdict != kBrokenOff && !verdict.empty() && !IsUsable(context, verdict));
  return verdict;
}

// Every equal sentence of the essay is corrected with it.
void Merge(EssayContext& context, const std::string& correction) {
  auto& app = context.program.app;
  app.gEssayCurrent = EssayWith(app, correction);
  app.gEssaySentence = protocol::RunningText(app.gEssayCurrent);
  FrmEssay& frmEssay = *context.frmEssay;
  CenterForm(frmEssay);
  frmEssay.Show();
  frmEssay.txtInput.SetFocus();
  frmEssay.txtInput.Text = app.gEssaySentence;
  StyleAllText(frmEssay.txtInput, kUnread);
  StyleText(frmEssay.txtInput, 0, std::max(app.gEssaySentenceNo - 1, 0), kPassed);
  app.gEssayNewSentence = false;
}

}  // namespace

void RestoreMenu(EssayContext& context) {
  MainWindow& frmMain = *context.program.hall.frmMain;
  frmMain.MenuButton(kClearButton).Visible = true;
  frmMain.MenuButton(kBreakButton).Visible = false;
}

Next CorrectSentence(EssayContext& context) {
  ShowSentenceInMain(context);
  const std::string correction = AwaitCorrection(context);
  HideMain(context);
  if (correction == kBrokenOff) context.frmEssay->mStopRequested = true;
  if (context.frmEssay->mStopRequested) return Next::kStop;
  if (correction.empty()) return Next::kSentence;
  Merge(context, correction);
  return Next::kSameAgain;
}

}  // namespace essay_walk

}  // namespace marovane
