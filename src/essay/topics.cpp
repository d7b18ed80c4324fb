#include "essay/topics.h"

#include "base/text.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/synchronise.h"
#include "core/text_utility.h"
#include "core/window_shell.h"
#include "essay/essay_context.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "protocol/pages.h"
#include "views/page_frame.h"

namespace marovane {

namespace {

constexpr int kShown = 90;
constexpr const char* kItemSeparator = "<@>";

enum TopicsButton { kStart = 0, kBack = 1, kNewTopic = 2 };

// Notes in gWorkListOk whether the server has listed them.
std::vector<protocol::Assignment> FetchAssignments(Program& program) try {
  auto& app = program.app;
  app.gWorkListOk = false;
  const std::string reply = program.proof.Ask(
      protocol::page::kWork, {{"pno", app.gAccountNo}, {"mode", "GETLST"}, {"cpno", app.gTeacherAccount}});
  program.proof.TellRefusal();
  auto assignments = protocol::ParseAssignments(reply);
  app.gWorkListOk = assignments.has_value();
  return std::move(assignments).value_or(std::vector<protocol::Assignment>{});
} catch (const BrokenOff&) {
  return {};  // the learner's own topics are there without the server
}

}  // namespace

FrmEssayInputEdu::FrmEssayInputEdu(EssayContext& context)
    : ButtonWindow(context.program, "frmEssayInputEdu", &AppState::gOpenEssayInputEdu),
      context_(context),
      records_(context.records) {
  BindCommands(webHtml, true);
  BindCommands(webHtml2, false);
  fade_.onGone = [this] { Leave(); };
}

void FrmEssayInputEdu::BindCommands(WebBrowser& page, bool isAssigned) {
  const auto showComment = [this](const std::string& workId) {
    program_.hall.frmBrowser->GoNavigate(TeacherCommentUrl(program_, workId), 2);
  };
  const auto showCollection = [this, isAssigned](const std::string& workId) {
    context_.frmEssayCollect->ShowEssayCollect(workId, isAssigned ? "Y" : "N");
  };
  OnCommands(page,
             {{"tab:", [this](const std::string& tab) { TurnTo(tab); }},
              {"wid:", [this, isAssigned](const std::string& workId) { StartOn(workId, isAssigned); }},
              {"res:", showComment},
              {"col:", showCollection},
              {"show:", [this](const std::string& essayId) { ShowReport(essayId); }},
              {"del:", [this, isAssigned](const std::string& ids) { Delete(ids, isAssigned); }}},
             [this] { shell_.picButtonsResetImage(); });
}

void FrmEssayInputEdu::Form_Load() {
  ShellWindow::Form_Load();
  if (program_.app.gEdition == "XQD") GetWorkList();
  mMainTop = program_.hall.frmMain->AsForm().Top;
  GetSelfEssayList();
  SetDefaultValue();
}

void FrmEssayInputEdu::SetDefaultValue() {
  lblMessage.Caption = "若您只想自行練短文，請點取上面標籤頁《自定題目》";
  webHtml2.Top = webHtml.Top;
  ShowTab(program_.app.gEdition == "XQD");
}

void FrmEssayInputEdu::ShowTab(bool showsAssigned) {
  webHtml.Left = showsAssigned ? kShown : kParked;
  webHtml2.Left = showsAssigned ? kParked : kShown;
  picButtons(kNewTopic).Visible = !showsAssigned;
  lblMessage.Visible = showsAssigned;
  (showsAssigned ? webHtml : webHtml2).SetFocus();  // it does not stay with a page that is out of sight
}

std::string FrmEssayInputEdu::ImageRoot() const { return program_.app.gServerUrlRoot + "_images/"; }

Practice FrmEssayInputEdu::PracticeOf(const std::string& workId) {
  Practice practice{records_.EssaysOf(workId)};
  if (!practice.essays.empty()) practice.mistakes = records_.CountMistakes(practice.essays.back().essayId);
  return practice;
}

void FrmEssayInputEdu::GetWorkList() {
  webHtml.Navigate("about:blank");
  std::vector<AssignedTopic> topics;
  std::vector<std::string> items;
  mHasOpenWork = false;
  for (auto& assignment : FetchAssignments(program_)) {
    items.push_back(assignment.workId + kItemSeparator + assignment.title);
    if (!assignment.isHandedIn) mHasOpenWork = true;
    Practice practice = PracticeOf(assignment.workId);
    topics.push_back({std::move(assignment), std::move(practice)});
  }
  lstWorks.Items = items;
  webHtml.Write(AssignedWorkPage(ImageRoot(), topics));
  picButtons(kStart).Visible = false;
  picButtons(kBack).Visible = false;
  picButtons(kNewTopic).Visible = true;
  mShowingWork = false;
}

void FrmEssayInputEdu::GetSelfEssayList() {
  webHtml2.Navigate("about:blank");
  std::vector<OwnTopic> topics;
  for (const auto& workId : records_.WorkIds()) {
    const auto first = records_.FirstOf(workId);
    if (!first || TitleOfWork(workId)) continue;
    topics.push_back({workId, PlainApostrophes(first->quiz), first->finalSet == "A", PracticeOf(workId)});
  }
  webHtml2.Write(OwnTopicsPage(ImageRoot(), program_.app.gEdition == "XQD", topics));
}

// Nothing for a topic that is none of the listed assignments.
std::optional<std::string> FrmEssayInputEdu::TitleOfWork(const std::string& workId) const {
  for (const auto& item : lstWorks.Items()) {
    const auto end = item.find(kItemSeparator);
    if (item.substr(0, end) == workId) return item.substr(end + std::string_view(kItemSeparator).size());
  }
  return std::nullopt;
}

void FrmEssayInputEdu::GetWorkHtm(const std::string& workId) {
  program_.app.gEssayWorkId = workId;
  webHtml.Navigate(QuestionUrl(program_, workId));
  picButtons(kStart).Visible = true;
  picButtons(kBack).Visible = true;
  picButtons(kNewTopic).Visible = false;
  mShowingWork = true;
}

void FrmEssayInputEdu::TurnTo(const std::string& tab) {
  if (tab != "1" && tab != "2") return;
  ShowTab(tab == "1");
  program_.app.gEssayStartRequested = tab == "2";
}

// An essay that is being walked through keeps its topic.
void FrmEssayInputEdu::StartOn(const std::string& workId, bool isAssigned) {
  auto& app = program_.app;
  if (app.gEssayMode) return context_.frmEssay->BringToFront();
  app.gEssayWorkId = workId;
  app.gEssayStartRequested = !isAssigned;
  if (isAssigned) {
    program_.hall.frmBrowser->GoNavigate(QuestionUrl(program_, workId), 1);
    app.gEssayQuiz = TitleOfWork(workId).value_or("");
  } else {
    const auto first = records_.FirstOf(workId);
    app.gEssayQuiz = first ? PlainApostrophes(first->quiz) : DefaultEssayTitle("", machine.loop.Now());
  }
  picButtons_Click(kStart);
}

void FrmEssayInputEdu::ShowReport(const std::string& essayId) {
  if (!program_.app.gEssayMode) program_.app.gEssayId = essayId;
  context_.ShowOldEssay(essayId);
}

void FrmEssayInputEdu::Delete(const std::string& essayIds, bool isAssigned) {
  if (!Confirm(program_, Message::kDeleteTopic)) return;
  FrmMessage::ProgressMsgBox(program_, Progress::kCollectingRecords);
  // A renderer may have encoded the sign on its way.
  for (const auto& essayId : base::Split(base::Replace(essayIds, "%7C", "|"), "|")) {
    if (!essayId.empty()) records_.Delete(essayId);
  }
  program_.frmMessage->closeForm();
  SyncAndWait(program_, "UPLOAD");
  WebBrowser& page = isAssigned ? webHtml : webHtml2;
  page.Visible = false;
  if (isAssigned) {
    GetWorkList();
  } else {
    GetSelfEssayList();
  }
  page.Visible = true;
}

void FrmEssayInputEdu::picButtons_Click(int index) {
  auto& app = program_.app;
  if (index == kStart) {
    if (app.gEssayWorkId.empty() && !mHasOpenWork) return OfferOwnTopic();
    if (app.gEssayActive) return;
    imgClose_Click();
    return context_.StartEssay();
  }
  if (index == kBack && mShowingWork) {
    Unload();
    return context_.frmEssayInputEdu->Show();
  }
  imgClose_Click();
  if (index == kNewTopic) context_.frmEssayInputForm->Show();
}

void FrmEssayInputEdu::OfferOwnTopic() {
  Left = kAway;
  Show();
  ShowMessage(program_, Message::kNoAssignment);
  imgClose_Click();
  context_.frmEssayInputForm->Show();
}

void FrmEssayInputEdu::Leave() {
  MainWindow& frmMain = *program_.hall.frmMain;
  frmMain.InputBox().Text = "";
  frmMain.AsForm().Top = mMainTop;
  Unload();
}

}  // namespace marovane
