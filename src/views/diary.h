// The record of days.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/shell_window.h"
#include "platform/timer.h"
#include "platform/web_browser.h"
#include "records/day_records.h"
#include "views/check_list.h"

namespace marovane {

class ErrListDb;
class RecordDb;

/// Makes `workRec` anew.
/// @param wait called between the right sentences and the faulty ones
void RebuildDays(DayRecords& records, const std::function<void()>& wait = {});

/// The days that the diary shows, the latest first: those of `workRec` that have sentences outside essays.
std::vector<DiaryDay> DiaryDays(DayRecords& records);

class FrmDiary : public ButtonWindow<2>, public HallWindow {
 public:
  FrmDiary(Program& program, RecordDb& records, ErrListDb& errList);

  Form& AsForm() override { return *this; }
  /// Fills `workRec` anew. Takes a second.
  void RebuildWorkRec();
  void ShowWorkRec();
  int GetCheckCounts() const { return list_.CheckedCount(); }
  void ShowSentenceForm();
  void CleanupDiaryRecord();
  /// Page 0 is the list of days, page 1 the charts.
  void picTabs_Click(int index);

  void Form_Load() override;

  WebBrowser webHtml{*this, "webHtml"}, webCharts{*this, "webCharts"};
  ControlArray<PictureBox, 2> picTabs{*this, "picTabs"}, imgTabOn{*this, "imgTabOn"},
      imgTabOff{*this, "imgTabOff"};
  ControlArray<PictureBox, 2> picSelectAll{*this, "picSelectAll"};
  ControlArray<Label, 2> lblSelectAll{*this, "lblSelectAll"}, lblCheckAll{*this, "lblCheckAll"};
  Timer tmrWaitProcess, tmrMessage;

 private:
  void picButtons_Click(int index) override;
  void ShowDeleted();
  void WaitASecond();
  void ShowCharts();

  RecordDb& recordDb_;
  ErrListDb& errList_;
  DayRecords records_;
  CheckList list_;
  bool waitFlag_ = false;
};

}  // namespace marovane
