// The end of the walk: the essay is closed, uploaded, handed in, and reported on.

#include "core/message.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/synchronise.h"
#include "core/window_shell.h"
#include "essay/hand_in.h"
#include "essay/report_window.h"
#include "essay/walk_steps.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "records/essay_records.h"

namespace marovane {

namespace essay_walk {
namespace {

constexpr int kTries = 10;

// A synchronisation that was broken off ends without a word.
bool UploadOnce(EssayContext& context) {
  if (!IsServerOnline(context.program)) return false;
  const EventLoop& loop = context.program.machine.loop;
  const int timesBefore = loop.TimesBrokenOff();
  SyncAndWait(context.program, "UPLOAD");
  return loop.TimesBrokenOff() == timesBefore;
}

void TryToUpload(EssayContext& context) {
  const auto isOver = [&context] { return !HasItsWindow(context); };
  while (!TryRepeatedly(
      context.program, kTries, [&context] { return UploadOnce(context); }, isOver)) {
    PauseBetweenTries(context.program, isOver);
    RequireWindow(context);
    if (!AskInPlace(context, Message::kUploadFailed)) break;
  }
  RequireWindow(context);
  WriteNeedSync(context.program, "N");
}

void Upload(EssayContext& context) try { TryToUpload(context); } catch (const BrokenOff&) {
  RequireWindow(context);  // the essay waits for the next synchronisation, its report need not
}

bool Submit(EssayContext& context, const Walked& walked) try {
  const auto isOver = [&context] { return !HasItsWindow(context); };
  if (SubmitEssay(context.program, walked.essayId, walked.workId, kTries, isOver)) return true;
  PauseBetweenTries(context.program, isOver);
  return false;
} catch (const BrokenOff&) {
  return false;
}

// Side by side in the middle of the window.
void ArrangeInMiddle(FrmEssay& frmEssay, int count) {
  constexpr int kGap = 120;
  const int width = frmEssay.picCommands(0).Width;
  int left = (frmEssay.Width - count * width - (count - 1) * kGap) / 2;
  for (int i = 0; i < count; ++i, left += width + kGap) {
    frmEssay.picCommands(i).Left = left;
    frmEssay.picCommands(i).Visible = true;
  }
}

void ShowStopped(EssayContext& context) {
  FrmEssay& frmEssay = *context.frmEssay;
  frmEssay.txtInput.Description = "已中斷批改";
  frmEssay.picButtons(0).Visible = false;
  frmEssay.picButtons(1).Visible = false;
  if (context.program.app.gEngineLevel.starts_with("edu")) frmEssay.picButtons(2).Visible = true;
}

void ShowFinished(EssayContext& context) {
  auto& app = context.program.app;
  FrmEssay& frmEssay = *context.frmEssay;
  for (int i = 0; i < frmEssay.picButtons.Count(); ++i) frmEssay.picButtons(i).Visible = false;
  frmEssay.picCommands(2).Visible = false;
  ArrangeInMiddle(frmEssay, app.gEssayStartRequested ? 3 : 2);
  app.gEssayNoListReturn = app.gEssayStartRequested;
}

}  // namespace

void FinishEssay(EssayContext& context) {
  auto& app = context.program.app;
  EssayRecords(context.records).FinishEssay(app.gEssayId, app.gEssayCurrent);
  app.gEssayFinished = true;
  AskInPlace(context, Message::kEssayDone);
  CenterForm(*context.frmEssay);
  Upload(context);
}

void WrapUp(EssayContext& context, const Walked& walked) {
  auto& app = context.program.app;
  FrmEssay& frmEssay = *context.frmEssay;
  app.gEssayStartRequested = walked.isOwnTopic;
  context.program.hall.frmMain->AsForm().Left = kAway;
  app.gEssayMode = false;
  frmEssay.txtInput.Text = app.gEssayCurrent;
  frmEssay.imgClose.Visible = true;
  if (app.gEssayFinished) {
    ShowFinished(context);
  } else {
    ShowStopped(context);
  }
}

void HandIn(EssayContext& context, const Walked& walked) {
  EssayRecords records(context.records);
  if (walked.isOwnTopic || records.CountHandedIn(walked.workId) > 0) return;
  if (!AskInPlace(context, Message::kHandInNow)) return;
  const bool isHandedIn = Submit(context, walked);
  if (isHandedIn) records.HandInEssay(walked.essayId, walked.workId);
  RequireWindow(context);
  AskInPlace(context, isHandedIn ? Message::kHandedIn : Message::kNotHandedIn);
}

void ShowReport(EssayContext& context, const Walked& walked) {
  FrmEssay& frmEssay = *context.frmEssay;
  StyleAllText(frmEssay.txtInput, kDone);
  context.program.hall.frmMain->InputBox().Text = "";
  frmEssay.mAnalysing = false;
  context.program.app.gEssayStartRequested = walked.isOwnTopic;
  ShowEssayResultHtml(context, walked.essayId, false);
}

}  // namespace essay_walk

}  // namespace marovane
