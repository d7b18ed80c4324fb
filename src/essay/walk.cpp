#include "essay/walk.h"

#include "base/day.h"
#include "base/text.h"
#include "base/transaction.h"
#include "base/utf16.h"
#include "core/engine_exchange.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "core/typed_text.h"
#include "core/window_shell.h"
#include "essay/archive.h"
#include "essay/text_rules.h"
#include "essay/walk_steps.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/sentences.h"
#include "records/essay_records.h"

namespace marovane {

using namespace essay_walk;

namespace {

bool AcceptText(EssayContext& context) {
  const Message* refusal = RefusalOf(context.frmEssay->txtInput.Text);
  if (refusal == nullptr) return true;
  if (refusal == &Message::kBadSigns) {
    context.program.app.gProgressDetail = TypedSentence(context.frmEssay->txtInput.Text()).Refused();
  }
  AskInPlace(context, *refusal);
  CenterForm(*context.frmEssay);
  context.frmEssay->txtInput.SetFocus();
  return false;
}

void OpenEssay(EssayContext& context) {
  auto& app = context.program.app;
  const base::LocalTime now = context.program.machine.loop.Now();
  context.frmEssay->mAnalysing = true;
  app.gEssayId = MakeRecId(context.program);
  if (app.gEssayQuiz.empty()) app.gEssayQuiz = base::FormatDateUnpadded(base::DayOf(now), "") + "我的短文";
  app.gEssayOriginal = context.frmEssay->txtInput.Text;
  app.gEssayCurrent = app.gEssayOriginal;
  app.gEssaySentence = protocol::RunningText(app.gEssayCurrent);
  EssayRecords(context.records)
      .InsertEssay({.essayId = app.gEssayId,
                    .workId = app.gEssayWorkId,
                    .quiz = app.gEssayQuiz,
                    .orgEssay = app.gEssayOriginal,
                    .newEssay = app.gEssayCurrent,
                    .sDate = base::DayOf(now)});
  context.frmEssay->GiveUpDraft();
}

void BeginWalk(EssayContext& context) {
  auto& app = context.program.app;
  FrmEssay& frmEssay = *context.frmEssay;
  app.gEssayMode = true;
  frmEssay.mViewOnly = false;
  frmEssay.txtInput.Text = app.gEssaySentence;
  StyleAllText(frmEssay.txtInput, kUnread);
  frmEssay.txtInput.SelLength = 0;
  frmEssay.txtInput.Description = "";
  frmEssay.ShowStopButton(true);
  frmEssay.picButtons(0).Visible = true;
  frmEssay.picButtons(1).Visible = false;
  frmEssay.picButtons(2).Visible = false;
  frmEssay.imgClose.Visible = false;
  context.program.hall.frmMain->AsForm().Left = kAway;
}

// A connection that breaks is a failed attempt like any other.
bool AttemptEngine(Program& program) {
  try {
    return TryWebEngine(program);
  } catch (const BrokenOff&) {
    throw;
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

// True when an engine is at hand, false when the user has broken off. Ends the program when the user gives
// up.
bool PrepareEngine(EssayContext& context) try {
  context.frmEssay->mEngineRunCode = MakeRunCode(true);
  while (!FindEngine(context.program)) {
    if (!AskInPlace(context, Message::kNoEngineAddress)) context.program.machine.loop.End();
    CenterForm(*context.frmEssay);
  }
  return true;
} catch (const BrokenOff&) {
  return false;
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
void GiveSentenceId(EssayContext& context) {
  auto& app = context.program.app;
  if (app.gEssayNewSentence) app.gEssaySId = MakeRecId(context.program);
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

void PaintSentence(EssayContext& context, const TextStyle& style) {
  const auto& app = context.program.app;
  StyleText(context.frmEssay->txtInput, std::max(app.gEssaySentenceNo - 1, 0), app.gEssaySentenceLen, style);
}

// The highlight stays so long that the eye can follow it; what is recorded meanwhile does not add to that.
void StartShowDelay(EssayContext& context) {
  context.frmEssay->mShowDelayTicks = 0;
  context.frmEssay->tmrShowDelay.Enabled = true;
}

void AwaitShowDelay(EssayContext& context) {
  constexpr int kTicks = 5;
  Await(context, [&context] { return context.frmEssay->mShowDelayTicks >= kTicks; });
  context.frmEssay->tmrShowDelay.Enabled = false;
}

void PassFromRecord(EssayContext& context, const OkSentence& known) {
  auto& app = context.program.app;
  StartShowDelay(context);
  RecordPassed(context, known.haveHtm);
  app.gEssayPageChecksum.clear();
  AwaitShowDelay(context);
  app.gVerdict = "PASS";
}

void RefuseFromRecord(EssayContext& context, const ErrSentence& known) {
  auto& app = context.program.app;
  StartShowDelay(context);
  base::Transaction transaction(context.records.Db());
  RecordRefused(context, known.sentence, known.errcode, known.haveHtm);
  context.records.RaiseMistake(known.errcode);
  transaction.Commit();
  app.gEssayPageChecksum = known.haveHtm == "N" ? "" : ArchiveChecksum(app.gEssayCurSentence);
  AwaitShowDelay(context);
  app.gVerdict = "ERRS";
}

// Once refused stays refused and once passed stays passed: only what no record knows goes to the engine.
void JudgeSentence(EssayContext& context) {
  auto& app = context.program.app;
  context.showFreshPage = nullptr;
  EssayRecords records(context.records);
  if (const auto ok = records.FindOkSentence(app.gEssayCurSentence)) return PassFromRecord(context, *ok);
  if (const auto err = records.FindErrSentence(app.gEssayCurSentence)) return RefuseFromRecord(context, *err);
  app.gVerdict.clear();
  PassStringToEngineEssay(context);
  Await(context, [&app] { return !app.gVerdict.empty(); });
}

void ShowFiledPage(EssayContext& context) {
  Program& program = context.program;
  auto& app = program.app;
  if (app.gEssayPageChecksum.empty()) return;
  if (context.showFreshPage) return context.showFreshPage();
  // The number keeps the browser from serving an old copy.
  program.hall.frmBrowser->GoNavigate(
      ArchivedPageUrl(program, app.gServerUrlRoot, app.gEssayPageChecksum) + "&tid=" + MakeRecId(program), 2);
}

// The user wants to leave a sentence with a warning as it is.
bool KeepsWarned(EssayContext& context) {
  const bool wantsToCorrect = AskInPlace(context, Message::kDoubtfulSentence);
  CenterForm(*context.frmEssay);
  context.frmEssay->Show();  // the page of the finding has come before it
  return !wantsToCorrect;
}

Next ActOnVerdict(EssayContext& context) {
  auto& app = context.program.app;
  const std::string verdict = app.gVerdict;
  if (verdict == "STOP" || context.frmEssay->mStopRequested) return Next::kStop;
  if (verdict == "ERRS" || verdict == "WARN") {
    context.frmEssay->Left = kAway;
    ShowFiledPage(context);
  }
  if (verdict == "ERRS") {
    AskInPlace(context, Message::kWrongSentence);
    return CorrectSentence(context);
  }
  if (verdict == "WARN") {
    if (!KeepsWarned(context)) return CorrectSentence(context);
    app.gVerdict = "PASS";
  }
  if (verdict == "PASS") context.frmEssay->txtInput.Description = "句子正確：" + app.gEssayCurSentence;
  if (app.gVerdict == "PASS") PaintSentence(context, kPassed);
  return Next::kSentence;
}

Next WalkSentence(EssayContext& context) {
  auto& app = context.program.app;
  if (app.gEssayCurSentence.empty()) return Next::kSentence;
  GiveSentenceId(context);
  LocateSentence(app);
  PaintSentence(context, kCurrent);
  JudgeSentence(context);
  return ActOnVerdict(context);
}

// True when the scan has run out, so that the essay is complete.
bool WalkSentences(EssayContext& context) {
  auto& app = context.program.app;
  app.gEssayNewSentence = true;
  app.gEssaySentenceNo = 1;
  context.frmEssay->mStopRequested = false;
  int end = 0;
  while (FindSentence(app, end)) {
    CenterForm(*context.frmEssay);
    // With an engine that answers, this is the only moment for the stop button.
    context.program.machine.loop.DoEvents();
    RequireWindow(context);
    if (context.frmEssay->mStopRequested) return false;
    const Next next = WalkSentence(context);
    RequireWindow(context);
    if (next == Next::kStop) return false;
    app.gEssayCurSentence.clear();
    if (next == Next::kSentence) app.gEssaySentenceNo = end + 1;
  }
  return !context.frmEssay->mStopRequested;
}

void Walk(EssayContext& context, const Walked& walked) {
  BeginWalk(context);
  const bool isComplete = PrepareEngine(context) && WalkSentences(context);
  if (isComplete) FinishEssay(context);
  WrapUp(context, walked);
  if (context.program.app.gEssayFinished) HandIn(context, walked);
  ShowReport(context, walked);
}

// The window has put the main window back, and the essay stays an interrupted one.
void EndWithoutWindow(EssayContext& context) {
  RestoreMenu(context);
  context.program.app.gEssayMode = false;
}

// A failure must not leave a window that accepts no keys and cannot be closed.
void Abandon(EssayContext& context, const Walked& walked) {
  if (!context.frmEssay.IsLoaded()) return EndWithoutWindow(context);
  context.frmEssay->mAnalysing = false;
  if (context.program.app.gEssayMode) WrapUp(context, walked);
  context.frmEssay->ShowStopButton(false);
  for (int i = 0; i < 2; ++i) context.frmEssay->picButtons(i).Visible = true;
  CenterForm(*context.frmEssay);
}

}  // namespace

bool essay_walk::HasItsWindow(EssayContext& context) {
  return context.frmEssay.IsLoaded() && context.frmEssay->mAnalysing;
}

void essay_walk::RequireWindow(EssayContext& context) {
  if (!HasItsWindow(context)) throw WindowGone{};
}

void essay_walk::Await(EssayContext& context, const std::function<bool()>& isMet) {
  context.program.machine.loop.WaitUntil([&] { return !HasItsWindow(context) || isMet(); });
  RequireWindow(context);
}

bool essay_walk::AskInPlace(EssayContext& context, const Message& message) {
  context.frmEssay->Left = kAway;
  const bool agrees = Confirm(context.program, message);
  if (!context.frmEssay.IsLoaded()) throw WindowGone{};
  return agrees;
}

void StartEssayProcess(EssayContext& context) {
  const auto& app = context.program.app;
  Walked walked{.essayId = "", .workId = app.gEssayWorkId, .isOwnTopic = app.gEssayStartRequested};
  try {
    auto& text = context.frmEssay->txtInput.Text;
    text = JoinWrappedLines(TidyTyped(text()));
    if (!AcceptText(context)) return;
    OpenEssay(context);
    walked.essayId = app.gEssayId;
    Walk(context, walked);
  } catch (const WindowGone&) {
    EndWithoutWindow(context);
  } catch (const std::exception&) {
    Abandon(context, walked);
    throw;
  }
}

}  // namespace marovane
