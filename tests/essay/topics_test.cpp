// The lists of topics, and what follows from a click in them.
#include "core/settings.h"
#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

using TopicsTest = EssayTest;
using SchoolTopics = SchoolTest;

constexpr const char* kList = "p_mrv_get_essay_work.asp";
constexpr const char* kNoWork = "※目前無作業。您可按 [開新短文] 自定題目練習\n";

TEST_F(SchoolTopics, EachStateOfAnAssignmentShowsWhatIsToBeDone) {
  Put({"e1", "practised", "A", "A", 4, 3});
  Put({"e2", "practised", "A", "N", 5, 1});
  Put({"e3", "answered", "B", "Y", 5});
  Put({"e4", "answered", "B", "N", 5});
  const std::string results =
      "查看各次練習的系統檢查結果 全選\n第 1 次系統檢查結果 （2026-11-4）\n第 2 次系統檢查結果 "
      "（2026-11-5）\n";
  const struct {
    const char* record;
    std::string rows, commands;
  } kCases[] = {
      {"new#N#2026/11/30#My <family>", "My &lt;family&gt; --- --- --- 2026/11/30 未交卷\n", "wid:new"},
      {"new#N#d#A#2026/11/2#", "A --- --- --- d 未交卷\n", "wid:new"},
      {"untitled#N#d#", "untitled --- --- --- d 未交卷\n", "wid:untitled"},
      {"practised#N#d#A#2026/11/2#",
       "A 請注意！ 教師在 2026/11/2 修改過題目內容 2 2026/11/5 1 d 未交卷 選取交卷?\n" + results,
       "wid:practised col:practised show:e1 show:e2"},
      {"answered#Y#d#B#2026/11/2#",
       "B 2 2026/11/5 0 d 已交卷 教師尚未批閱\n"
       "查看各次練習的系統檢查結果 全選\n第 1 次系統檢查結果 （2026-11-5） 《交卷》\n"
       "第 2 次系統檢查結果 （2026-11-5）\n" +
           std::string(kNoWork),
       "res:answered show:e3 show:e4"},
      {"elsewhere#Y#d#C##Y", "C --- --- --- d 已交卷 查看教師批閱\n" + std::string(kNoWork),
       "res:elsewhere res:elsewhere"},
  };
  for (const auto& c : kCases) {
    Assign(std::string("OK_") + c.record);
    const auto& page = OpenTopics().webHtml;
    EXPECT_EQ(RowsOf(page), "\n" + c.rows) << c.record;
    EXPECT_EQ(CommandsOf(page), c.commands) << c.record;
    if (c.commands != "res:answered show:e3 show:e4") continue;
    // An essay that was handed in names nothing to delete.
    EXPECT_THAT(page.Page(), AllOf(HasSubstr("id='chkdel_answered_1' value='' style='visibility:hidden;'>"),
                                   HasSubstr("id='chkdel_answered_2' value='e4'>")));
  }
}

TEST_F(SchoolTopics, AReplyWithoutAListLeavesTheLearnersOwnTopics) {
  Put({"e1", "w1", "Once assigned"});
  machine.http.Route(kList, "ERR_NOTFOUND");
  const std::function<void()> kWays[] = {
      [] {},
      [this] { machine.http.RouteToNowhere(kList); },
      [this] {
        app.gWorkListOk = true;
        machine.http.breaksOff = [](const auto& request) { return request.url.ends_with(kList); };
      },
  };
  for (const auto& prepare : kWays) {
    prepare();
    EXPECT_EQ(RowsOf(OpenTopics().webHtml), std::string("\n") + kNoWork);
    EXPECT_FALSE(app.gWorkListOk || room.frmEssayInputEdu->mHasOpenWork);
    EXPECT_EQ(CommandsOf(room.frmEssayInputEdu->webHtml2), "wid:w1 col:w1 show:e1");
  }
  EXPECT_EQ(machine.http.Bodies(kList).front(), "key=zorbelquinter&pno=1234567890&mode=GETLST&cpno=");
}

TEST_F(TopicsTest, OwnTopicsAreThoseThatTheServerDoesNotList) {
  Put({"e1", "w1", "Assigned"});
  Put({"e2", "w2", "Tom’s day", "A", 4, 2});
  Put({"e3", "w2", "another title", "N", 5});
  Put({"e4", "w3", "Assigned without a title"});
  Assign("OK_w1#N#d#Assigned<@>w3#N#d#");
  const std::string own = "\nTom's day 2 2026/11/5 0 中斷\n查看各次練習的系統檢查結果 全選\n";
  app.gEdition = "XQD";
  EXPECT_THAT(RowsOf(OpenTopics().webHtml2), StartsWith(own));
  EXPECT_THAT(RowsOf(room.frmEssayInputEdu->webHtml2), Not(HasSubstr("Assigned")));
  EXPECT_THAT(room.frmEssayInputEdu->webHtml2.Page(), HasSubstr("指定作業"));
  app.gEdition = "MRV";
  EXPECT_THAT(RowsOf(OpenTopics().webHtml2), HasSubstr("Assigned 1 2026/11/5 0 正常完成"));
  EXPECT_THAT(room.frmEssayInputEdu->webHtml2.Page(), Not(HasSubstr("指定作業")));
}

TEST_F(SchoolTopics, TabsTurnBetweenTheListsAndSayWhoseTopicComesNext) {
  auto& topics = OpenTopics();
  const auto shown = [&] {
    return std::string(topics.webHtml.Left == 90 ? "assigned " : "") +
           (topics.webHtml2.Left == 90 ? "own " : "") + (topics.picButtons(2).Visible ? "new " : "") +
           (topics.lblMessage.Visible ? "hint " : "") +
           (app.gEssayStartRequested ? "own topic" : "assignment");
  };
  EXPECT_EQ(shown(), "assigned hint assignment");
  EXPECT_FALSE(topics.webHtml.FollowLink("cmd:tab:2"));
  EXPECT_EQ(shown(), "own new own topic");
  for (const char* nothing : {"cmd:", "cmd:tab", "cmd:tab:3", "cmd:other:1", "cmd:tab:"}) {
    EXPECT_FALSE(topics.webHtml2.FollowLink(nothing)) << nothing;
    EXPECT_EQ(shown(), "own new own topic") << nothing;
  }
  EXPECT_FALSE(topics.webHtml2.FollowLink("cmd:tab:1"));
  EXPECT_EQ(shown(), "assigned hint assignment");
  EXPECT_TRUE(topics.webHtml.FollowLink("about:blank"));
}

TEST_F(SchoolTopics, AnAssignmentStartsWithItsQuestionAndTitle) {
  Assign("OK_w1#N#d#My family<@>w2#N#d#My school");
  app.gEssayStartRequested = true;
  OpenTopics().webHtml.FollowLink("cmd:wid:w2");
  EXPECT_FALSE(app.gEssayStartRequested);
  EXPECT_EQ(app.gEssayWorkId + " " + app.gEssayQuiz, "w2 My school");
  EXPECT_THAT(composition.frmBrowser->webMain.LocationURL(), HasSubstr("&workId=w2&mode=GETHTM&"));
  EXPECT_TRUE(room.frmEssay->Visible() && app.gEssayActive);
  machine.loop.WaitUntil([this] { return !app.gOpenEssayInputEdu; });
  // An essay that is open goes on under the topic that was picked last, but for one that is walked through.
  Window().txtInput.Text = "I run.";
  OpenTopics().webHtml.FollowLink("cmd:wid:w1");
  EXPECT_EQ(app.gEssayWorkId + " " + app.gEssayQuiz, "w1 My family");
  EXPECT_THAT(composition.frmBrowser->webMain.LocationURL(), HasSubstr("&workId=w1&"));
  EXPECT_EQ(Window().txtInput.Text(), "I run.");
  app.gEssayMode = true;
  OpenTopics().webHtml.FollowLink("cmd:wid:w2");
  EXPECT_EQ(app.gEssayWorkId, "w1");
  app.gEssayMode = false;
  EXPECT_TRUE(app.gOpenEssayInputEdu);
}

TEST_F(TopicsTest, AnOwnTopicIsTakenUpAgainUnderItsTitle) {
  Put({"e1", "w1", "Tom’s day"});
  composition.frmMain->txtInput.Text = "left over";
  composition.frmMain->imgMenu_Click(4);
  const int top = composition.frmMain->Top;
  room.frmEssayInputEdu->webHtml2.FollowLink("cmd:wid:w1");
  composition.frmMain->Top = top + 100;
  machine.loop.WaitUntil([this] { return !app.gOpenEssayInputEdu; });
  EXPECT_EQ(composition.frmMain->txtInput.Text(), "");
  EXPECT_EQ(composition.frmMain->Top(), top);
  ExpectMessage(Message::kEssayDone);
  SendFrom(Window(), "I run.");
  EXPECT_EQ(LastEssay().workId + " " + LastEssay().quiz, "w1 Tom’s day");
  room.frmEssay.Unload();
  OpenTopics().webHtml2.FollowLink("cmd:wid:unknown");
  EXPECT_EQ(app.gEssayWorkId + " " + app.gEssayQuiz, "unknown 我的短文20261105");
}

TEST_F(SchoolTopics, WithNothingToDoATopicOfTheLearnersOwnIsOffered) {
  Assign("OK_w1#Y#d#A#");
  auto& topics = OpenTopics();
  ExpectMessage(Message::kNoAssignment, kOk, [&] { EXPECT_EQ(topics.Left(), -20000); });
  topics.picButtons_Click(0);
  EXPECT_TRUE(app.gOpenEssayInputForm);
  machine.loop.WaitUntil([this] { return !app.gOpenEssayInputEdu; });
  room.frmEssayInputForm->picButtons_Click(1);
  EXPECT_TRUE(app.gOpenEssayInputEdu) << "giving up leads back to a list that there is";
  machine.http.Route(kList, "ERR");
  room.frmEssayInputForm->picButtons_Click(1);
  OpenTopics().imgClose_Click();
  machine.loop.WaitUntil([this] { return !app.gOpenEssayInputEdu && !app.gOpenEssayInputForm; });
  room.frmEssayInputForm->Show();
  room.frmEssayInputForm->picButtons_Click(1);
  EXPECT_FALSE(app.gOpenEssayInputEdu);
}

TEST_F(TopicsTest, TitlesOfNewTopics) {
  const std::pair<const char*, const char*> kCases[] = {{"  My cat ", "My cat"}, {"   ", "我的短文20261105"}};
  std::string last;
  for (const auto& [typed, title] : kCases) {
    room.frmEssayInputForm->Show();
    machine.user.Type(room.frmEssayInputForm->txtInput, typed);
    machine.user.Click(room.frmEssayInputForm->picButtons(0));
    EXPECT_EQ(app.gEssayQuiz, title);
    EXPECT_TRUE(app.gEssayStartRequested && room.frmEssay->Visible());
    EXPECT_NE(app.gEssayWorkId, last);
    last = app.gEssayWorkId;
    machine.loop.WaitUntil([this] { return !app.gOpenEssayInputForm; });
  }
}

TEST_F(SchoolTopics, TheQuestionInThePlaceOfTheListLeadsBack) {
  Assign("OK_w1#N#d#A");
  auto& topics = OpenTopics();
  topics.GetWorkHtm("w1");
  EXPECT_THAT(topics.webHtml.LocationURL(), HasSubstr("&workId=w1&mode=GETHTM"));
  EXPECT_TRUE(topics.picButtons(0).Visible && topics.picButtons(1).Visible && !topics.picButtons(2).Visible);
  machine.user.Click(topics.picButtons(1));
  EXPECT_FALSE(room.frmEssayInputEdu->mShowingWork || room.frmEssayInputEdu->picButtons(1).Visible);
  room.frmEssayInputEdu->picButtons_Click(1);
  machine.loop.WaitUntil([this] { return !app.gOpenEssayInputEdu; });
}

TEST_F(SchoolTopics, ReportsCommentsAndCollectionsOpenFromTheLists) {
  Put({"e1", "w1"});
  Assign("OK_w1#Y#d#A##Y");
  auto& topics = OpenTopics();
  topics.webHtml.FollowLink("cmd:res:w1");
  EXPECT_THAT(composition.frmBrowser->webOther.LocationURL(),
              MatchesRegex("http://school/p_get_essay_work_teacher.asp\\?tid=[0-9]+"
                           "&key=zorbelquinter&pno=1234567890&workId=w1"));
  topics.webHtml.FollowLink("cmd:col:w1");
  EXPECT_EQ(CommandsOf(room.frmEssayCollect->webHtml), "show:e1 snd:e1@w1");
  topics.webHtml2.FollowLink("cmd:col:w1");
  EXPECT_EQ(CommandsOf(room.frmEssayCollect->webHtml), "show:e1");
  topics.webHtml.FollowLink("cmd:show:e1");
  EXPECT_TRUE(Window().mViewOnly && app.gEssayNoListReturn);
  EXPECT_EQ(app.gEssayId, "e1");
}

TEST_F(TopicsTest, DeletesTheTickedEssaysAfterAQuestion) {
  const struct {
    const char* argument;
    MessageButton answer;
    const char *deleted, *left, *commands;
  } kCases[] = {{"e1|e2|", kNo, "", "e1 e2 e3", "wid:w2 col:w2 show:e3 wid:w1 col:w1 show:e1 show:e2"},
                {"", kYes, "", "e1 e2 e3", "wid:w2 col:w2 show:e3 wid:w1 col:w1 show:e1 show:e2"},
                {"|e2||", kYes, "e2", "e1 e3", "wid:w2 col:w2 show:e3 wid:w1 col:w1 show:e1"},
                {"e1%7Ce3%7Cunknown%7C", kYes, "e1 e2 e3", "", ""}};
  Put({"e1", "w1", "A", "N", 5, 2});
  Put({"e2", "w1", "A", "N", 5, 1});
  Put({"e3", "w2", "B"});
  OpenTopics();
  for (const auto& c : kCases) {
    ExpectMessage(Message::kDeleteTopic, c.answer);
    room.frmEssayInputEdu->webHtml2.FollowLink(std::string("cmd:del:") + c.argument);
    EXPECT_EQ(EssaysWith("D"), c.deleted);
    EXPECT_EQ(EssaysWith("Y"), c.left);
    EXPECT_TRUE(room.frmEssayInputEdu->webHtml2.Visible);
    EXPECT_EQ(CommandsOf(room.frmEssayInputEdu->webHtml2), c.commands);
  }
  EXPECT_THAT(Texts("select distinct upload from oksentence union select upload from errsentence"),
              ElementsAre("D"));
  EXPECT_THAT(upload.modes, ElementsAre("UPLOAD", "UPLOAD", "UPLOAD"));
}

TEST_F(TopicsTest, AWalkThatWaitsForACorrectionIsLeftAlone) {
  Put({"e1", "w1"});
  ExpectMessage(Message::kWrongSentence);
  OnCorrection([this] {
    const std::string walked = app.gEssayId + app.gEssayWorkId + app.gEssayQuiz;
    OpenTopics().webHtml2.FollowLink("cmd:wid:w1");
    room.frmEssayInputEdu->webHtml2.FollowLink("cmd:show:e1");
    room.frmEssayInputForm->picButtons_Click(0);
    EXPECT_EQ(app.gEssayId + app.gEssayWorkId + app.gEssayQuiz, walked);
    EXPECT_TRUE(app.gEssayMode && Window().mAnalysing);
    composition.frmMain->txtInput.Text = "He goes home.";
    machine.user.Press(composition.frmMain->txtInput, kKeyEnter);
  });
  SendToTheEnd("He go home.");
  EXPECT_EQ(LastEssay().newEssay, "He goes home.");
}

}  // namespace

}  // namespace marovane
