// The end of the walk: the essay is closed, uploaded, handed in, and reported on.

#include "core/message.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "core/synchronise.h"
#include "essay/hand_in.h"
#include "essay/report_window.h"
#include "essay/walk_steps.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "records/essay_records.h"

namespace marovane {

namespace essay_walk {
namespace {

constexpr int kTries = 10;

bool UploadOnce(EssayRoom& room) {
  if (!IsServerOnline(room.program)) return false;
  SyncAndWait(room.program, "UPLOAD");
  return true;
}

void Upload(EssayRoom& room) {
  while (!TryRepeatedly(room.program, kTries, [&room] { return UploadOnce(room); })) {
    room.program.machine.loop.Wait(kPauseBetweenTries);
    if (!AskInPlace(room, Message::kUploadFailed)) break;
  }
  WriteNeedSync(room.program, "N");
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

void ShowStopped(EssayRoom& room) {
  FrmEssay& frmEssay = *room.frmEssay;
  frmEssay.picButtons(0).Visible = false;
  frmEssay.picButtons(1).Visible = false;
  if (room.program.app.gEngineLevel.starts_with("edu")) frmEssay.picButtons(2).Visible = true;
}

void ShowFinished(EssayRoom& room) {
  auto& app = room.program.app;
  FrmEssay& frmEssay = *room.frmEssay;
  for (int i = 0; i < frmEssay.picButtons.Count(); ++i) frmEssay.picButtons(i).Visible = false;
  frmEssay.picCommands(2).Visible = false;
  ArrangeInMiddle(frmEssay, app.gEssayStartRequested ? 3 : 2);
  app.gEssayNoListReturn = app.gEssayStartRequested;
}

}  // namespace

void FinishEssay(EssayRoom& room) {
  auto& app = room.program.app;
  EssayRecords(room.records).FinishEssay(app.gEssayId, app.gEssayCurrent);
  app.gEssayFinished = true;
  AskInPlace(room, Message::kEssayDone);
  CenterForm(*room.frmEssay);
  Upload(room);
}

void WrapUp(EssayRoom& room) {
  auto& app = room.program.app;
  FrmEssay& frmEssay = *room.frmEssay;
  room.program.hall.frmMain->AsForm().Left = kAway;
  app.gEssayMode = false;
  frmEssay.txtInput.Text = app.gEssayCurrent;
  frmEssay.imgClose.Visible = true;
  if (app.gEssayFinished) {
    ShowFinished(room);
  } else {
    ShowStopped(room);
  }
}

void HandIn(EssayRoom& room) {
  auto& app = room.program.app;
  EssayRecords records(room.records);
  if (app.gEssayStartRequested || records.CountHandedIn(app.gEssayWorkId) > 0) return;
  if (!AskInPlace(room, Message::kHandInNow)) return;
  if (SubmitEssay(room.program, app.gEssayId, app.gEssayWorkId, kTries)) {
    records.HandInEssay(app.gEssayId, app.gEssayWorkId);
    AskInPlace(room, Message::kHandedIn);
  } else {
    room.program.machine.loop.Wait(kPauseBetweenTries);
    AskInPlace(room, Message::kNotHandedIn);
  }
}

void ShowReport(EssayRoom& room) {
  FrmEssay& frmEssay = *room.frmEssay;
  StyleAllText(frmEssay.txtInput, kDone);
  room.program.hall.frmMain->InputBox().Text = "";
  frmEssay.mAnalysing = false;
  ShowEssayResultHtml(room, room.program.app.gEssayId, false);
}

}  // namespace essay_walk

}  // namespace marovane
