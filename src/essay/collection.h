// The essays of one topic: to look at, to hand in, to write into a file, to delete.
#pragma once

#include <string>

#include "core/shell_window.h"
#include "platform/timer.h"
#include "platform/web_browser.h"
#include "records/essay_topics.h"
#include "views/check_list.h"

namespace marovane {

struct EssayContext;

class FrmEssayCollect : public ButtonWindow<3>, public HallWindow {
 public:
  explicit FrmEssayCollect(EssayContext& context);

  Form& AsForm() override { return *this; }
  /// @param workId of the topic, "" for all essays
  /// @param handInMode "Y" when the topic was opened as an assignment, "N" as one of the learner's own
  void ShowEssayCollect(const std::string& workId, const std::string& handInMode);
  int GetCheckCounts() const { return list_.CheckedCount(); }
  /// Has the first chosen essay checked as the main window checks what is typed there.
  void GetRecAndPassEngine();
  /// Writes the chosen essays into a text file.
  void GetRecAndOutput();
  /// Deletes the chosen essays with their sentences, but for those that were handed in.
  void CleanupSelectedRecord();

  void Form_Load() override;
  void imgClose_Click() override { fade_.Out(); }

  WebBrowser webHtml{*this, "webHtml"};
  ControlArray<PictureBox, 2> picSelectAll{*this, "picSelectAll"};
  ControlArray<Label, 2> lblSelectAll{*this, "lblSelectAll"}, lblCheckAll{*this, "lblCheckAll"};
  Timer tmrMessage;

 private:
  void picButtons_Click(int index) override;
  void HandleLink(const std::string& url, bool& cancel);
  void AskAndHandIn(const std::string& essayId, const std::string& workId);
  void HandIn(const std::string& essayId, const std::string& workId);
  void ShowDeleted();
  void Leave();
  std::string TextOf(const std::string& essayId) const;

  EssayContext& context_;
  EssayTopics records_;
  CheckList list_;
  std::string mWorkId;
  std::string mHandInMode;
  bool mSkippedHandedIn = false;
};

}  // namespace marovane
