// The door to essay writing: topics to choose from, and the results of earlier essays on them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/shell_window.h"
#include "essay/topic_pages.h"
#include "platform/web_browser.h"
#include "records/essay_records.h"

namespace marovane {

struct EssayContext;

class FrmEssayInputEdu : public ButtonWindow<3>, public HallWindow {
 public:
  explicit FrmEssayInputEdu(EssayContext& context);

  Form& AsForm() override { return *this; }
  void Form_Load() override;
  void SetDefaultValue();
  /// The teacher's assignments, as the server lists them now.
  void GetWorkList();
  /// Topics of the records that are no assignments of the list.
  void GetSelfEssayList();
  /// Shows the question of an assignment in the place of the list.
  void GetWorkHtm(const std::string& workId);
  void picButtons_Click(int index) override;
  void imgClose_Click() override { fade_.Out(); }

  WebBrowser webHtml{*this, "webHtml"}, webHtml2{*this, "webHtml2"};
  ComboBox lstWorks{*this, "lstWorks"};  ///< number and title of each assignment, joined by "<@>"
  Label lblMessage{*this, "lblMessage"};

  bool mShowingWork = false;
  bool mHasOpenWork = false;
  int mMainTop = 0;

 private:
  void BindCommands(WebBrowser& page, bool isAssigned);
  void TurnTo(const std::string& tab);
  void StartOn(const std::string& workId, bool isAssigned);
  void ShowReport(const std::string& essayId);
  void Delete(const std::string& essayIds, bool isAssigned);
  void ShowTab(bool showsAssigned);
  void OfferOwnTopic();
  void Leave();
  Practice PracticeOf(const std::string& workId);
  std::optional<std::string> TitleOfWork(const std::string& workId) const;
  std::string ImageRoot() const;

  EssayContext& context_;
  EssayRecords records_;
};

}  // namespace marovane
