#include "views/diary.h"

#include "base/day.h"
#include "core/message.h"
#include "platform/machine.h"
#include "views/chart_drawing.h"
#include "views/work_off_screen.h"

namespace marovane {

void RebuildDays(DayRecords& records, const std::function<void()>& wait) {
  records.ClearWorkRec();
  records.InsertOkDays(records.OkDays());
  if (wait) wait();
  records.MergeErrDays(records.ErrDays());
}

std::vector<DiaryDay> DiaryDays(DayRecords& records) {
  std::vector<DiaryDay> days;
  for (const auto& day : records.WorkRecDays()) {
    const DiaryDay entry{day, records.CountOk(day), records.CountErr(day)};
    if (entry.ok > 0 || entry.err > 0) days.push_back(entry);
  }
  return days;
}

FrmDiary::FrmDiary(Program& program, RecordDb& records, ErrListDb& errList)
    : ListWindow(program, "frmDiary", &AppState::gOpenDiary),
      recordDb_(records),
      errList_(errList),
      records_(records) {
  picTabs.On(&Control::Click, [this](int index) { picTabs_Click(index); });
  tmrWaitProcess.onTick = [this] { tmrWaitProcess.Enabled = false; };
}

void FrmDiary::Form_Load() {
  ShellWindow::Form_Load();
  picTabs_Click(0);
  RebuildWorkRec();
  ShowWorkRec();
}

void FrmDiary::RebuildWorkRec() {
  WorkOffScreen(program_, Progress::kCollectingDays, [this] {
    RebuildDays(records_, [this] { WaitASecond(); });
    machine.loop.DoEvents();
  });
}

void FrmDiary::WaitASecond() {
  machine.loop.DoEvents();
  tmrWaitProcess.Enabled = true;
  machine.loop.WaitUntil([this] { return !tmrWaitProcess.Enabled; });
}

void FrmDiary::ShowWorkRec() {
  webHtml.Navigate("about:blank");
  const auto days = DiaryDays(records_);
  list_.Reset(static_cast<int>(days.size()));
  webHtml.Write(DiaryPage(days));
}

void FrmDiary::ShowSentenceForm() {
  std::string days;
  for (const auto& day : list_.CheckedKeys()) days += day + "#";
  if (!days.empty()) days.pop_back();
  const auto& frmSentences = program_.hall.frmSentences;
  if (program_.app.gOpenSentences) frmSentences->AsForm().Unload();
  frmSentences->ShowDaySentences("OKONLY", days);
  frmSentences->AsForm().Show();
}

void FrmDiary::picButtons_Click(int index) {
  if (GetCheckCounts() == 0) return ShowMessage(program_, Message::kChooseDays);
  if (index == 0) return ShowSentenceForm();
  if (!Confirm(program_, Message::kDeleteDays)) return;
  CleanupDiaryRecord();
  tmrMessage.Enabled = true;
}

void FrmDiary::CleanupDiaryRecord() {
  std::vector<base::Day> days;
  for (const auto& text : list_.CheckedKeys()) {
    if (const auto day = base::ParseDate(text)) days.push_back(*day);
  }
  records_.DeleteDays(days);
}

void FrmDiary::ShowDeleted() {
  ShowMessage(program_, Message::kDeleted);
  RebuildWorkRec();
  ShowWorkRec();
}

void FrmDiary::picTabs_Click(int index) {
  const bool showsCharts = index == 1;
  for (int i = 0; i < picTabs.Count(); ++i) {
    picTabs(i).Picture = i == index ? imgTabOn(i).Picture : imgTabOff(i).Picture;
  }
  for (int i = 0; i < picButtons.Count(); ++i) {
    picButtons(i).Visible = !showsCharts;
    picSelectAll(i).Visible = !showsCharts;
    lblSelectAll(i).Visible = !showsCharts;
  }
  webHtml.Visible = !showsCharts;
  webCharts.Visible = showsCharts;
  if (showsCharts) ShowCharts();
  // The focus does not stay with a page that is hidden.
  if (Visible) (showsCharts ? webCharts : webHtml).SetFocus();
}

void FrmDiary::ShowCharts() {
  webCharts.Write(ChartsPage(CollectCharts(recordDb_, errList_, base::DayOf(machine.loop.Now()))));
}

}  // namespace marovane
