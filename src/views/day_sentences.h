// The right sentences of the chosen days.
#pragma once

#include <string>

#include "core/shell_window.h"
#include "platform/timer.h"
#include "platform/web_browser.h"
#include "records/day_records.h"
#include "views/check_list.h"
#include "views/record_export.h"

namespace marovane {

class RecordDb;

class FrmSentences : public ButtonWindow<3>, public DaySentences {
 public:
  FrmSentences(Program& program, RecordDb& records, Window<FrmBindSelect>& frmBindSelect);

  Form& AsForm() override { return *this; }
  /// @param mode "OKONLY", or "ALL" for the faulty sentences too
  /// @param days dates parted by "#", such as "2026/11/5#2026/11/6"; "" for all days
  void ShowDaySentences(const std::string& mode, const std::string& days) override;
  int GetCheckCounts() const { return list_.CheckedCount(); }
  /// Has the first chosen sentence checked once more, without recording it.
  void GetRecAndPassEngine();
  /// Writes the chosen sentences into a text file.
  void GetRecAndOutput();
  void CleanupSelectedRecord();

  WebBrowser webHtml{*this, "webHtml"};
  ControlArray<PictureBox, 2> picSelectAll{*this, "picSelectAll"};
  ControlArray<Label, 2> lblSelectAll{*this, "lblSelectAll"}, lblCheckAll{*this, "lblCheckAll"};
  Timer tmrMessage;

 private:
  void picButtons_Click(int index) override;
  void webHtml_BeforeNavigate2(const std::string& url, bool& cancel);
  void AskAndDelete();
  void ShowDeleted();

  DayRecords records_;
  Window<FrmBindSelect>& frmBindSelect_;
  CheckList list_;
  std::string dayList_;
};

}  // namespace marovane
