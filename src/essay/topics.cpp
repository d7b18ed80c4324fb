#include "essay/topics.h"

#include <map>

#include "base/text.h"
#include "core/assignment_urls.h"
#include "core/message.h"
#include "core/synchronise.h"
#include "core/text_utility.h"
#include "essay/essay_context.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

namespace marovane {

namespace {

constexpr int kShown = 90;
constexpr const char* kItemSeparator = "<@>";
constexpr const char* kCommand = "cmd:";

enum Button { kStart = 0, kBack = 1, kNewTopic = 2 };

}  // namespace

FrmEssayInputEdu::FrmEssayInputEdu(EssayContext& context)
    : ButtonWindow(context.program, "frmEssayInputEdu", &AppState::gOpenEssayInputEdu),
      context_(context),
      records_(context.records) {
  webHtml.BeforeNavigate2 = [this](const std::string& url, bool& cancel) { HandleLink(url, cancel, true); };
  webHtml2.BeforeNavigate2 = [this](const std::string& url, bool& cancel) { HandleLink(url, cancel, false); };
  fade_.onGone = [this] { Leave(); };
}

void FrmEssayInputEdu::Form_Load() {
  ShellWindow::Form_Load();
  if (context_.program.app.gEdition == "XQD") GetWorkList();
  mMainTop = context_.program.hall.frmMain->AsForm().Top;
  GetSelfEssayList();
  SetDefaultValue();
}

void FrmEssayInputEdu::SetDefaultValue() {
  lblMessage.Caption = "若您只想自行練短文，請點取上面標籤頁《自定題目》";
  webHtml2.Top = webHtml.Top;
  ShowTab(context_.program.app.gEdition == "XQD");
}

void FrmEssayInputEdu::ShowTab(bool showsAssigned) {
  webHtml.Left = showsAssigned ? kShown : kParked;
  webHtml2.Left = showsAssigned ? kParked : kShown;
  picButtons(kNewTopic).Visible = !showsAssigned;
  lblMessage.Visible = showsAssigned;
  (showsAssigned ? webHtml : webHtml2).SetFocus();  // it does not stay with a page that is out of sight
}

std::string FrmEssayInputEdu::ImageRoot() const { return context_.program.app.gServerUrlRoot + "_images/"; }

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
  for (auto& assignment : FetchAssignments(context_.program)) {
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
  webHtml2.Write(OwnTopicsPage(ImageRoot(), context_.program.app.gEdition == "XQD", topics));
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
  context_.program.app.gEssayWorkId = workId;
  webHtml.Navigate(QuestionUrl(context_.program, workId));
  picButtons(kStart).Visible = true;
  picButtons(kBack).Visible = true;
  picButtons(kNewTopic).Visible = false;
  mShowingWork = true;
}

void FrmEssayInputEdu::HandleLink(const std::string& url, bool& cancel, bool isAssigned) {
  static const std::map<std::string, Action> actions{
      {"tab", &FrmEssayInputEdu::TurnTo},      {"wid", &FrmEssayInputEdu::StartOn},
      {"res", &FrmEssayInputEdu::ShowComment}, {"col", &FrmEssayInputEdu::ShowCollection},
      {"show", &FrmEssayInputEdu::ShowReport}, {"del", &FrmEssayInputEdu::Delete},
  };
  if (!url.starts_with(kCommand)) return;
  cancel = true;
  shell_.picButtonsResetImage();
  const std::string order = url.substr(std::string_view(kCommand).size());
  const auto end = order.find(':');
  const auto action = actions.find(order.substr(0, end));
  if (end == std::string::npos || action == actions.end()) return;
  (this->*action->second)(order.substr(end + 1), isAssigned);
}

void FrmEssayInputEdu::TurnTo(const std::string& tab, bool /*isAssigned*/) {
  if (tab != "1" && tab != "2") return;
  ShowTab(tab == "1");
  context_.program.app.gEssayStartRequested = tab == "2";
}

// An essay that is being walked through keeps its topic.
void FrmEssayInputEdu::StartOn(const std::string& workId, bool isAssigned) {
  Program& program = context_.program;
  auto& app = program.app;
  if (app.gEssayMode) return context_.frmEssay->BringToFront();
  app.gEssayWorkId = workId;
  if (isAssigned) {
    app.gEssayStartRequested = false;
    program.hall.frmBrowser->GoNavigate(QuestionUrl(program, workId), 1);
    app.gEssayQuiz = TitleOfWork(workId).value_or("");
  } else {
    const auto first = records_.FirstOf(workId);
    app.gEssayQuiz = first ? PlainApostrophes(first->quiz) : DefaultEssayTitle("", machine.loop.Now());
  }
  picButtons_Click(kStart);
}

void FrmEssayInputEdu::ShowComment(const std::string& workId, bool /*isAssigned*/) {
  context_.program.hall.frmBrowser->GoNavigate(TeacherCommentUrl(context_.program, workId), 2);
}

void FrmEssayInputEdu::ShowCollection(const std::string& workId, bool isAssigned) {
  context_.frmEssayCollect->ShowEssayCollect(workId, isAssigned ? "Y" : "N");
}

void FrmEssayInputEdu::ShowReport(const std::string& essayId, bool /*isAssigned*/) {
  if (!context_.program.app.gEssayMode) context_.program.app.gEssayId = essayId;
  context_.ShowOldEssay(essayId);
}

void FrmEssayInputEdu::Delete(const std::string& essayIds, bool isAssigned) {
  Program& program = context_.program;
  if (!Confirm(program, Message::kDeleteTopic)) return;
  FrmMessage::ProgressMsgBox(program, Progress::kCollectingRecords);
  // A renderer may have encoded the sign on its way.
  for (const auto& essayId : base::Split(base::Replace(essayIds, "%7C", "|"), "|")) {
    if (!essayId.empty()) records_.Delete(essayId);
  }
  program.frmMessage->closeForm();
  SyncAndWait(program, "UPLOAD");
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
  auto& app = context_.program.app;
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
  ShowMessage(context_.program, Message::kNoAssignment);
  imgClose_Click();
  context_.frmEssayInputForm->Show();
}

void FrmEssayInputEdu::Leave() {
  MainWindow& frmMain = *context_.program.hall.frmMain;
  frmMain.InputBox().Text = "";
  frmMain.AsForm().Top = mMainTop;
  Unload();
}

}  // namespace marovane
