// The right sentences of the chosen days.
#pragma once

#include <string>

#include "core/program.h"
#include "core/shell_buttons.h"
#include "core/window_shell.h"
#include "platform/timer.h"
#include "platform/web_browser.h"
#include "records/day_records.h"
#include "views/check_list.h"
#include "views/record_export.h"

namespace marovane {

class RecordDb;

class FrmSentences : public Form, public DaySentences {
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

  void Form_Load() override;
  void Form_Unload() override;
  void closeForm();

  WebBrowser webHtml{*this, "webHtml"};
  ControlArray<PictureBox, 3> picButtons{*this, "picButtons"}, imgBtnOff{*this, "imgBtnOff"},
      imgBtnOver{*this, "imgBtnOver"}, imgBtnOn{*this, "imgBtnOn"};
  ControlArray<PictureBox, 2> picSelectAll{*this, "picSelectAll"};
  ControlArray<Label, 2> lblSelectAll{*this, "lblSelectAll"}, lblCheckAll{*this, "lblCheckAll"};
  PictureBox imgClose{*this, "imgClose"}, picBG{*this, "picBG"};
  Timer tmrMessage;

 private:
  void picButtons_Click(int index);
  void webHtml_BeforeNavigate2(const std::string& url, bool& cancel);
  void AskAndDelete();
  void TellDeleted();

  Program& program_;
  DayRecords records_;
  Window<FrmBindSelect>& frmBindSelect_;
  Fade fade_;
  ShellButtons shell_;
  CheckList list_;
  std::string dayList_;
};

}  // namespace marovane
