// The record of days.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/html.h"
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

/// A table with a box for each day; the value of a box is its day, as "2026/11/5".
base::Html DiaryPage(const std::vector<DiaryDay>& days);

class FrmDiary : public ListWindow<2>, public HallWindow {
 public:
  FrmDiary(Program& program, RecordDb& records, ErrListDb& errList);

  Form& AsForm() override { return *this; }
  /// Fills `workRec` anew. Takes a second.
  void RebuildWorkRec();
  void ShowWorkRec();
  void ShowSentenceForm();
  void CleanupDiaryRecord();
  /// Page 0 is the list of days, page 1 the charts.
  void picTabs_Click(int index);

  void Form_Load() override;

  WebBrowser webCharts{*this, "webCharts"};
  ControlArray<PictureBox, 2> picTabs{*this, "picTabs"}, imgTabOn{*this, "imgTabOn"},
      imgTabOff{*this, "imgTabOff"};
  Timer tmrWaitProcess{machine.loop, 1000};

 private:
  void picButtons_Click(int index) override;
  void ShowDeleted() override;
  void WaitASecond();
  void ShowCharts();

  RecordDb& recordDb_;
  ErrListDb& errList_;
  DayRecords records_;
};

}  // namespace marovane
