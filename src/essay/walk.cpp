#include "essay/walk.h"

#include "base/day.h"
#include "base/text.h"
#include "base/transaction.h"
#include "base/utf16.h"
#include "core/engine_exchange.h"
#include "core/input_box.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "essay/archive.h"
#include "essay/engine_passes.h"
#include "essay/text_rules.h"
#include "essay/walk_steps.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/sentences.h"
#include "records/essay_records.h"

namespace marovane {

using namespace essay_walk;

namespace {

bool AcceptText(EssayRoom& room) {
  const Message* refusal = RefusalOf(room.frmEssay->txtInput.Text);
  if (refusal == nullptr) return true;
  AskInPlace(room, *refusal);
  CenterForm(*room.frmEssay);
  room.frmEssay->txtInput.SetFocus();
  return false;
}

// Two runs within one second make the same ids.
std::string MakeEssayId(EssayRoom& room) {
  std::string id;
  do {
    id = MakeRecId(room.program.app, room.program.machine.loop.Now());
  } while (EssayRecords(room.records).FindEssay(id));
  return id;
}

void OpenEssay(EssayRoom& room) {
  auto& app = room.program.app;
  const base::LocalTime now = room.program.machine.loop.Now();
  room.frmEssay->mAnalysing = true;
  app.gEssayId = MakeEssayId(room);
  if (app.gEssayQuiz.empty()) app.gEssayQuiz = base::FormatDateUnpadded(base::DayOf(now), "") + "我的短文";
  app.gEssayOriginal = room.frmEssay->txtInput.Text;
  app.gEssayCurrent = app.gEssayOriginal;
  app.gEssaySentence = protocol::RunningText(app.gEssayCurrent);
  EssayRecords(room.records)
      .InsertEssay({.essayId = app.gEssayId,
                    .workId = app.gEssayWorkId,
                    .quiz = app.gEssayQuiz,
                    .orgEssay = app.gEssayOriginal,
                    .newEssay = app.gEssayCurrent,
                    .sDate = base::DayOf(now)});
}

void BeginWalk(EssayRoom& room) {
  auto& app = room.program.app;
  FrmEssay& frmEssay = *room.frmEssay;
  app.gEssayMode = true;
  frmEssay.txtInput.Text = app.gEssaySentence;
  StyleAllText(frmEssay.txtInput, kUnread);
  frmEssay.txtInput.SelLength = 0;
  frmEssay.ShowStopButton(true);
  frmEssay.picButtons(0).Visible = true;
  frmEssay.picButtons(1).Visible = false;
  frmEssay.picButtons(2).Visible = false;
  frmEssay.imgClose.Visible = false;
  room.program.hall.frmMain->AsForm().Left = kAway;
}

// A connection that breaks is a failed attempt like any other.
bool AttemptEngine(Program& program) {
  try {
    return TryWebEngine(program);
  } catch (const RunTimeError&) {
    return false;
  }
}

bool FindEngine(Program& program) {
  for (int i = 0; i < kEngineAttempts; ++i) {
    if (AttemptEngine(program)) return true;
  }
  return false;
}

// Returns when an engine is at hand, or ends the program when the user gives up.
void PrepareEngine(EssayRoom& room) {
  room.frmEssay->mEngineRunCode = MakeRunCode(true);
  while (!FindEngine(room.program)) {
    if (!AskInPlace(room, Message::kNoEngineAddress)) room.program.machine.loop.End();
    CenterForm(*room.frmEssay);
  }
}

// The next sentence of the running text, from gEssaySentenceNo on; "" for a line without one.
// @param end place of its end mark
bool FindSentence(AppState& app, int& end) {
  const std::u16string text = base::ToUtf16(app.gEssaySentence);
  const int begin = std::max(app.gEssaySentenceNo, 1);
  end = protocol::FindSentenceEnd(text, begin, protocol::LineEnds::kEndSentences);
  if (end == 0) return false;
  app.gEssayCurSentence = protocol::TidySentence(base::ToUtf8(std::u16string_view(text).substr(
      static_cast<std::size_t>(begin - 1), static_cast<std::size_t>(end - begin + 1))));
  return true;
}

// A retry keeps the id of the attempt before.
void GiveSentenceId(EssayRoom& room) {
  auto& app = room.program.app;
  if (app.gEssayNewSentence) app.gEssaySId = MakeRecId(app, room.program.machine.loop.Now());
  app.gEssayNewSentence = true;
}

void LocateSentence(AppState& app) {
  const std::u16string text = base::ToUtf16(app.gEssaySentence);
  const int old = std::max(app.gEssaySentenceNo, 1);
  const auto found = text.find(base::ToUtf16(app.gEssayCurSentence), static_cast<std::size_t>(old - 1));
  if (found != std::u16string::npos) app.gEssaySentenceNo = static_cast<int>(found) + 1;
  if (found == 0 && old == 1) app.gEssaySentenceNo = 0;
  app.gEssaySentenceLen = base::Len(app.gEssayCurSentence);
}

void PaintSentence(EssayRoom& room, const TextStyle& style) {
  const auto& app = room.program.app;
  StyleText(room.frmEssay->txtInput, std::max(app.gEssaySentenceNo - 1, 0), app.gEssaySentenceLen, style);
}

// The highlight stays so long that the eye can follow it; what is recorded meanwhile does not add to that.
void StartShowDelay(EssayRoom& room) {
  room.frmEssay->mShowDelayTicks = 0;
  room.frmEssay->tmrShowDelay.Enabled = true;
}

void AwaitShowDelay(EssayRoom& room) {
  constexpr int kTicks = 5;
  room.program.machine.loop.WaitUntil([&room] { return room.frmEssay->mShowDelayTicks >= kTicks; });
  room.frmEssay->tmrShowDelay.Enabled = false;
}

void PassFromRecord(EssayRoom& room, const OkSentence& known) {
  auto& app = room.program.app;
  const base::LocalTime now = room.program.machine.loop.Now();
  StartShowDelay(room);
  room.records.InsertOkSentence({.sId = MakeRecId(app, now),
                                 .sentence = app.gEssayCurSentence,
                                 .sDate = base::DayOf(now),
                                 .essayId = app.gEssayId,
                                 .essaySId = app.gEssaySId,
                                 .haveHtm = known.haveHtm});
  app.gEssayPageChecksum.clear();
  AwaitShowDelay(room);
  app.gVerdict = "PASS";
}

void RefuseFromRecord(EssayRoom& room, const ErrSentence& known) {
  auto& app = room.program.app;
  const base::LocalTime now = room.program.machine.loop.Now();
  StartShowDelay(room);
  base::Transaction transaction(room.records.Db());
  room.records.InsertErrSentence({.id = MakeRecId(app, now),
                                  .sentence = known.sentence,
                                  .errcode = known.errcode,
                                  .sDate = base::DayOf(now),
                                  .essayId = app.gEssayId,
                                  .essaySId = app.gEssaySId,
                                  .haveHtm = known.haveHtm});
  room.records.RaiseMistake(known.errcode);
  transaction.Commit();
  app.gEssayPageChecksum = known.haveHtm == "N" ? "" : ArchiveChecksum(app.gEssayCurSentence);
  AwaitShowDelay(room);
  app.gVerdict = "ERRS";
}

// Once refused stays refused and once passed stays passed: only what no record knows goes to the engine.
void JudgeSentence(EssayRoom& room) {
  auto& app = room.program.app;
  EssayRecords records(room.records);
  if (const auto ok = records.FindOkSentence(app.gEssayCurSentence)) return PassFromRecord(room, *ok);
  if (const auto err = records.FindErrSentence(app.gEssayCurSentence)) return RefuseFromRecord(room, *err);
  app.gVerdict.clear();
  PassStringToEngineEssay(room);
  room.program.machine.loop.WaitUntil([&app] { return !app.gVerdict.empty(); });
}

void ShowFiledPage(EssayRoom& room) {
  Program& program = room.program;
  auto& app = program.app;
  if (app.gEssayPageChecksum.empty()) return;
  // The number keeps the browser from serving an old copy.
  program.hall.frmBrowser->GoNavigate(ArchivedPageUrl(program, app.gServerUrlRoot, app.gEssayPageChecksum) +
                                          "&tid=" + MakeRecId(app, program.machine.loop.Now()),
                                      2);
}

// The user wants to leave a sentence with a warning as it is.
bool KeepsWarned(EssayRoom& room) {
  const bool wantsToCorrect = AskInPlace(room, Message::kDoubtfulSentence);
  CenterForm(*room.frmEssay);
  return !wantsToCorrect;
}

Next ActOnVerdict(EssayRoom& room) {
  auto& app = room.program.app;
  const std::string verdict = app.gVerdict;
  if (verdict == "STOP") return Next::kStop;
  if (verdict == "ERRS" || verdict == "WARN") {
    room.frmEssay->Left = kAway;
    ShowFiledPage(room);
  }
  if (verdict == "ERRS") {
    AskInPlace(room, Message::kWrongSentence);
    return CorrectSentence(room);
  }
  if (verdict == "WARN") {
    if (!KeepsWarned(room)) return CorrectSentence(room);
    app.gVerdict = "PASS";
  }
  if (app.gVerdict == "PASS") PaintSentence(room, kPassed);
  return Next::kSentence;
}

Next WalkSentence(EssayRoom& room) {
  auto& app = room.program.app;
  if (app.gEssayCurSentence.empty()) return Next::kSentence;
  GiveSentenceId(room);
  LocateSentence(app);
  PaintSentence(room, kCurrent);
  JudgeSentence(room);
  return ActOnVerdict(room);
}

// True when the scan has run out, so that the essay is complete.
bool WalkSentences(EssayRoom& room) {
  auto& app = room.program.app;
  app.gEssayNewSentence = true;
  app.gEssaySentenceNo = 1;
  room.frmEssay->mStopRequested = false;
  int end = 0;
  while (FindSentence(app, end)) {
    CenterForm(*room.frmEssay);
    room.program.machine.loop.DoEvents();  // with an engine that answers, the only moment for the stop button
    if (room.frmEssay->mStopRequested) return false;
    const Next next = WalkSentence(room);
    if (next == Next::kStop) return false;
    app.gEssayCurSentence.clear();
    if (next == Next::kSentence) app.gEssaySentenceNo = end + 1;
  }
  return !room.frmEssay->mStopRequested;
}

void Walk(EssayRoom& room) {
  BeginWalk(room);
  PrepareEngine(room);
  if (WalkSentences(room)) FinishEssay(room);
  WrapUp(room);
  if (room.program.app.gEssayFinished) HandIn(room);
  ShowReport(room);
}

// A failure must not leave a window that takes no keys and cannot be closed.
void Abandon(EssayRoom& room) {
  room.frmEssay->mAnalysing = false;
  if (room.program.app.gEssayMode) WrapUp(room);
  room.frmEssay->ShowStopButton(false);
  for (int i = 0; i < 2; ++i) room.frmEssay->picButtons(i).Visible = true;
  CenterForm(*room.frmEssay);
}

}  // namespace

bool essay_walk::AskInPlace(EssayRoom& room, const Message& message) {
  room.frmEssay->Left = kAway;
  return Confirm(room.program, message);
}

void StartEssayProcess(EssayRoom& room) {
  NormaliseInput(room.frmEssay->txtInput);
  if (!AcceptText(room)) return;
  try {
    OpenEssay(room);
    Walk(room);
  } catch (const std::exception&) {
    Abandon(room);
    throw;
  }
}

}  // namespace marovane
