// The essays of one topic: to look at, to hand in, to write into a file, to delete.
#pragma once

#include <string>

#include "records/essay_records.h"
#include "views/check_list.h"

namespace marovane {

struct EssayContext;

class FrmEssayCollect : public ListWindow<3>, public HallWindow {
 public:
  explicit FrmEssayCollect(EssayContext& context);

  Form& AsForm() override { return *this; }
  /// @param workId of the topic, "" for all essays
  /// @param handInMode "Y" when the topic was opened as an assignment, "N" as one of the learner's own
  void ShowEssayCollect(const std::string& workId, const std::string& handInMode);
  /// Has the first chosen essay checked as the main window checks what is typed there.
  void GetRecAndPassEngine();
  /// Writes the chosen essays into a text file.
  void GetRecAndOutput();
  /// Deletes the chosen essays with their sentences, except those that were handed in; the message about it
  /// follows a second later.
  void CleanupSelectedRecord();

  void Form_Load() override;
  void imgClose_Click() override { fade_.Out(); }

 private:
  void picButtons_Click(int index) override;
  void AskAndHandIn(const std::string& ids);
  void HandIn(const std::string& essayId, const std::string& workId);
  void ShowDeleted() override;
  void Leave();
  std::string TextOf(const std::string& essayId);

  EssayContext& context_;
  EssayRecords records_;
  std::string mWorkId;
  std::string mHandInMode;
  bool mSkippedHandedIn = false;
};

}  // namespace marovane
