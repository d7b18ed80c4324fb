#include "essay/report_window.h"

#include "core/window_shell.h"
#include "essay/essay_context.h"
#include "essay/report.h"
#include "platform/run_time_error.h"
#include "records/err_list_db.h"

namespace marovane {

namespace {

EssayRow FindEssay(EssayContext& context, const std::string& essayId) {
  auto essay = EssayRecords(context.records).FindEssay(essayId);
  if (!essay) throw RunTimeError("沒有這篇短文：" + essayId);
  return *std::move(essay);
}

// Browser windows must be able to come before it, so this time it is not topmost.
void Reload(EssayContext& context, bool viewOnly) {
  auto& app = context.program.app;
  app.gEssayPlacementMode = "NORMAL";
  context.frmEssay.Unload();
  context.frmEssay->Show();
  app.gEssayPlacementMode.clear();
  context.frmEssay->mViewOnly = viewOnly;
  app.gEssayReportShown = !viewOnly;
}

void WritePage(FrmEssay& frmEssay, const base::Html& page) {
  auto& webHtml = frmEssay.webHtml;
  webHtml.Top = kParked;
  webHtml.Left = kParked;
  webHtml.Visible = true;
  webHtml.Navigate("about:blank");
  webHtml.Write(page);
  webHtml.Top = frmEssay.txtInput.Top;
  webHtml.Left = frmEssay.txtInput.Left;
  webHtml.Width = frmEssay.picHtmlDeskPos.Left - webHtml.Left;
  webHtml.Height = frmEssay.picHtmlDeskPos.Top - webHtml.Top;
}

void ArrangeCommands(FrmEssay& frmEssay) {
  frmEssay.txtInput.Visible = false;  // under the page it would still have the keyboard
  for (int i = 0; i < frmEssay.picButtons.Count(); ++i) frmEssay.picButtons(i).Visible = false;
  for (int i = 0; i < 2; ++i) {
    frmEssay.picCommands(i).Left = frmEssay.picButtons(i).Left;
    frmEssay.picCommands(i).Visible = true;
  }
  frmEssay.picCommands(2).Visible = false;
}

// The reload has cleared what the commands need.
void RestoreState(AppState& app, const EssayRow& essay) {
  app.gEssayWorkId = essay.workId;
  app.gEssayOriginal = PlainApostrophes(essay.orgEssay);
  app.gEssayCurrent = PlainApostrophes(essay.newEssay);
  app.gEssayQuiz = PlainApostrophes(essay.quiz);
}

base::Html BuildPage(EssayContext& context, const EssayRow& essay) {
  EssayRecords records(context.records);
  return BuildEssayReport(
      {.essay = essay,
       .okSentences = records.OkSentencesOf(essay.essayId),
       .errSentences = records.ErrSentencesOf(essay.essayId),
       .imageRoot = context.program.app.gServerUrlRoot + "_images/",
       .outlineOf = [&](const std::string& code) { return context.errList.Outline(code); }});
}

}  // namespace

base::Html EssayReportPage(EssayContext& context, const std::string& essayId) {
  return BuildPage(context, FindEssay(context, essayId));
}

void ShowEssayResultHtml(EssayContext& context, const std::string& essayId, bool viewOnly) {
  const EssayRow essay = FindEssay(context, essayId);
  const base::Html page = BuildPage(context, essay);
  Reload(context, viewOnly);
  FrmEssay& frmEssay = *context.frmEssay;
  WritePage(frmEssay, page);
  ArrangeCommands(frmEssay);
  RestoreState(context.program.app, essay);
  frmEssay.mShown = {.workId = essay.workId,
                     .quiz = PlainApostrophes(essay.quiz),
                     .original = PlainApostrophes(essay.orgEssay),
                     .current = PlainApostrophes(essay.newEssay),
                     .isOwnTopic = context.program.app.gEssayStartRequested};
  if (viewOnly) frmEssay.SetInputTextStyle(1);
  CenterForm(frmEssay);
}

}  // namespace marovane
