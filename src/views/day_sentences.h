// The right sentences of the chosen days.
#pragma once

#include <string>

#include "records/day_records.h"
#include "views/check_list.h"
#include "views/record_export.h"

namespace marovane {

class RecordDb;

class FrmSentences : public ListWindow<3>, public DaySentences {
 public:
  FrmSentences(Program& program, RecordDb& records, Window<FrmBindSelect>& frmBindSelect);

  Form& AsForm() override { return *this; }
  /// @param mode "OKONLY", or "ALL" for the faulty sentences too
  /// @param days dates separated by "#", such as "2026/11/5#2026/11/6"; "" for all days
  void ShowDaySentences(const std::string& mode, const std::string& days) override;
  /// Has the first chosen sentence checked once more, without recording it.
  void GetRecAndPassEngine();
  /// Writes the chosen sentences into a text file.
  void GetRecAndOutput();
  /// Flags the chosen sentences as deleted; the message about it follows a second later.
  void CleanupSelectedRecord();

 private:
  void picButtons_Click(int index) override;
  void ShowDeleted() override;

  DayRecords records_;
  Window<FrmBindSelect>& frmBindSelect_;
  std::string dayList_;
};

}  // namespace marovane
