// The essay window outside a walk.
#include <filesystem>
#include <fstream>

#include "essay/draft.h"
#include "essay/report_window.h"
#include "tests/essay/essay_fixture.h"
#include "views/work_off_screen.h"

namespace marovane {

namespace {

using namespace ::testing;

using SessionTest = EssayTest;

TEST_F(SessionTest, OpensFromTheMenuByANewTopicAndLeadsBackToTheTopics) {
  machine.user.Click(composition.frmMain->imgMenu(4));
  machine.user.Click(room.frmEssayInputEdu->picButtons(2));
  machine.user.Press(room.frmEssayInputForm->txtInput, kKeyEnter);
  machine.loop.WaitUntil([&] { return !app.gOpenEssayInputEdu && !app.gOpenEssayInputForm; });
  EXPECT_TRUE(app.gEssayActive && app.gOpenEssay && Window().TopMost);
  EXPECT_EQ(composition.frmMain->Left, -20000);
  EXPECT_EQ(app.gEssayQuiz, "我的短文20261105");
  EXPECT_THAT(Window().txtInput.Text(), StartsWith("請在此輸入您的短文內容"));
  EXPECT_FALSE(app.gEssayWorkId.empty() || Window().picButtons(2).Visible);
  machine.user.Type(Window().txtInput, "He \"goes\" (home)/to_5!\nYes.");
  EXPECT_EQ(Window().txtInput.Text(), "He goes hometo5\r\nYes.");
  machine.user.Click(Window().picButtons(0));
  machine.loop.WaitUntil([&] { return !room.frmEssay.IsLoaded(); });
  EXPECT_GE(composition.frmMain->Left, 0);
  EXPECT_FALSE(app.gEssayActive || app.gOpenEssay);
  EXPECT_TRUE(app.gOpenEssayInputEdu && room.frmEssayInputEdu->Visible());
}

TEST_F(SessionTest, FiltersKeys) {
  Window().Show();
  const std::pair<int, int> keys[] = {{'A', 'A'}, {13, 13}, {9, 0}, {27, 0}};
  for (auto [key, passed] : keys) {
    app.gEssaySentenceNo = 9;
    Window().txtInput.KeyDown.Raise(key);
    EXPECT_EQ(key, passed);
    EXPECT_EQ(app.gEssaySentenceNo, 1);
  }
}

TEST_F(SessionTest, RewritesTheEssayAfterItsReport) {
  CorrectRefused("He goes home.");
  app.gEssayQuiz = "My day";
  SendToTheEnd("He go home.\r\nI run.");
  machine.user.Click(Window().picCommands(0));
  EXPECT_THAT(room.frmEssayCompare->webHtml.Page(), HasSubstr("He go home.<br>I run."));
  machine.user.Click(Window().picCommands(1));
  EXPECT_FALSE(room.frmEssayCompare.IsLoaded());
  EXPECT_EQ(Window().txtInput.Text(), "He goes home.\r\nI run.");
  EXPECT_FALSE(Window().webHtml.Visible);
  EXPECT_TRUE(Window().txtInput.Visible);
  ExpectMessage(Message::kEssayDone);
  machine.user.Click(Window().picButtons(1));
  EXPECT_THAT(Texts("select quiz from essay"), ElementsAre("My day", "My day"));
  EXPECT_THAT(Asked(), ElementsAre("He go home.", "He goes home.", "I run."));
}

TEST_F(SessionTest, StopsTheRewriteOfAnOldEssayAndLeavesBothWhole) {
  Put({"E1", "W1", "My day", "N", 5, 0, "Y", "He go home.\r\nI run."});
  room.ShowOldEssay("E1");
  machine.user.Click(Window().picCommands(1));
  EXPECT_EQ(Window().txtInput.Text(), "He go home.\r\nI run.");
  ExpectMessage(Message::kWrongSentence);
  OnCorrection([this] { machine.user.Click(Window().picButtons(0)); });
  machine.user.Click(Window().picButtons(1));
  EXPECT_FALSE(app.gEssayMode || app.gEssayFinished);
  EXPECT_THAT(Texts("select finalSet || newEssay || orgEssay from essay order by rowid"),
              ElementsAre("NHe go home.\r\nI run.He go home.\r\nI run.",
                          "AHe go home.\r\nI run.He go home.\r\nI run."));
  EXPECT_THAT(Window().webHtml.Page(), HasSubstr("這篇短文批改過程中被中斷"));
}

TEST_F(SessionTest, RewritesUnderTheTopicOfTheReport) {
  Put({"E1", "W1", "Other"});
  app.gEssayQuiz = "My day";
  SendToTheEnd("He walks.");
  const EssayRow first = LastEssay();
  OpenTopics().webHtml2.FollowLink("cmd:wid:W1");
  EXPECT_EQ(app.gEssayWorkId, "W1");
  machine.user.Click(Window().picCommands(1));
  ExpectMessage(Message::kEssayDone);
  machine.user.Click(Window().picButtons(1));
  EXPECT_EQ(LastEssay().workId + LastEssay().quiz, first.workId + "My day");
  EXPECT_NE(LastEssay().essayId, first.essayId);
}

TEST_F(SessionTest, WhatWasTypedAndNotSentIsInTheNextWindow) {
  Put({"E1", "W1"});
  const auto close = [this] {
    machine.user.Click(Window().imgClose);
    machine.loop.WaitUntil([this] { return !room.frmEssay.IsLoaded(); });
  };
  const std::pair<const char*, std::function<void()>> kWays[] = {
      {"close", close},
      {"report", [this] { composition.frmBrowser->SpecialFunctionProc("cmd:show:E1"); }},
      {"topic", [this] { room.StartOwnEssay("Another"); }},
  };
  std::string text;
  for (const auto& [way, leave] : kWays) {
    SCOPED_TRACE(way);
    room.StartOwnEssay("Mine");
    machine.user.Focus(Window().txtInput);
    machine.user.Type(Window().txtInput, std::string("By ") + way + "\n");
    text += std::string("By ") + way + "\r\n";
    EXPECT_EQ(Window().txtInput.Text(), text);
    leave();
    room.StartOwnEssay("Another");
    EXPECT_EQ(Window().txtInput.Text(), text);
  }
  // It is the learner's alone.
  close();
  app.gAccountNo = "another";
  room.StartOwnEssay("");
  EXPECT_THAT(Window().txtInput.Text(), StartsWith("請在此輸入"));
  app.gAccountNo = "1234567890";
  // A paragraph out of the main window comes first, and the draft after it.
  ExpectMessage(Message::kEssayDone);
  room.StartEssayWith("I walk.");
  machine.user.Click(Window().picButtons(1));
  room.StartOwnEssay("");
  EXPECT_EQ(Window().txtInput.Text(), text);
  // What was sent, and what was emptied, is no draft any more.
  machine.user.Focus(Window().txtInput);
  machine.user.Type(Window().txtInput, "end.");
  ExpectMessage(Message::kEssayDone);
  machine.user.Click(Window().picButtons(1));
  EXPECT_EQ(LastEssay().orgEssay, "By close By report By topic end.");
  room.StartOwnEssay("");
  EXPECT_THAT(Window().txtInput.Text(), StartsWith("請在此輸入"));
  machine.user.Focus(Window().txtInput);
  machine.user.Type(Window().txtInput, "I");
  close();
  room.StartOwnEssay("");
  EXPECT_EQ(Window().txtInput.Text(), "I");
  Window().txtInput.Text = std::string();
  close();
  room.StartOwnEssay("");
  EXPECT_THAT(Window().txtInput.Text(), StartsWith("請在此輸入"));
}

TEST_F(SessionTest, WhatIsTypedIsKeptWhileTheWindowIsOpenAndForTheAccountThatOpenedIt) {
  const auto waiting = [this] { return Draft(composition.program).Take(); };
  room.StartOwnEssay("Mine");
  machine.user.Focus(Window().txtInput);
  machine.user.Type(Window().txtInput, "I");
  machine.loop.Wait(std::chrono::seconds{3});
  EXPECT_EQ(waiting(), "I") << "the power may fail";
  app.gAccountNo = "another";
  machine.user.Type(Window().txtInput, " run");
  room.frmEssay.Unload();
  EXPECT_EQ(waiting(), "");
  app.gAccountNo = "1234567890";
  EXPECT_EQ(waiting(), "I run");
  // What comes in front of it is given up alone.
  room.StartEssayWith("I walk.");
  machine.loop.Wait(std::chrono::seconds{3});
  EXPECT_EQ(waiting(), "I run\r\nI walk.");
  ExpectMessage(Message::kEssayDone);
  machine.user.Click(Window().picButtons(1));
  EXPECT_EQ(waiting(), "I run");
}

TEST_F(SessionTest, ADraftThatCannotBeKeptIsToldAndNotLost) {
  std::filesystem::create_directories(app.gTempDir + "/marovane");
  const std::filesystem::path folder = app.gTempDir + "/marovane/drafts";
  const auto fillDisk = [&] {
    std::filesystem::remove_all(folder);
    std::ofstream(folder) << "no folder";
  };
  room.StartOwnEssay("Mine");
  fillDisk();
  machine.user.Focus(Window().txtInput);
  machine.user.Type(Window().txtInput, "I run");
  ExpectMessage(Message::kDraftNotKept);
  machine.loop.Wait(std::chrono::seconds{9});
  EXPECT_EQ(machine.user.Expected(), 0U) << "told once";
  EXPECT_EQ(Window().txtInput.Text(), "I run");
  std::filesystem::remove(folder);  // there is room again
  machine.loop.Wait(std::chrono::seconds{3});
  EXPECT_EQ(Draft(composition.program).Take(), "I run");
  machine.user.Type(Window().txtInput, " home");
  fillDisk();
  // Nothing more is tried while the learner reads that, nor after it.
  ExpectMessage(Message::kDraftCopied, kOk, [this] { machine.loop.Wait(std::chrono::seconds{9}); });
  room.frmEssay.Unload();
  machine.loop.Wait(std::chrono::seconds{9});
  EXPECT_EQ(machine.desktop.ClipboardText(), "I run home");
  EXPECT_EQ(machine.user.Expected(), 0U);

  std::filesystem::remove(folder);
  Draft(composition.program).Keep("I walk");
  const std::filesystem::path file = std::filesystem::directory_iterator(folder)->path();
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);  // cannot be read
  ExpectMessage(Message::kDraftNotRead);
  room.StartOwnEssay("Mine");
  EXPECT_EQ(machine.user.Expected(), 0U);
  EXPECT_THAT(Window().txtInput.Text(), StartsWith("請在此輸入"));
  machine.user.Focus(Window().txtInput);
  machine.user.Type(Window().txtInput, "I swim");
  room.frmEssay.Unload();
  EXPECT_EQ(Draft(composition.program).Take(), "I swim") << "an unreadable file bars nothing";
}

TEST_F(SessionTest, TheMainWindowComesBackFromWhereverItWas) {
  FrmMain& frmMain = *composition.frmMain;
  for (const int left : {3000, -20000}) {
    frmMain.Left = left;
    room.StartOwnEssay("");
    EXPECT_EQ(frmMain.Left, -20000);
    room.frmEssay.Unload();
    EXPECT_TRUE(left > 0 ? frmMain.Left == left : frmMain.Left > 0) << left;
  }
  // Work that began while it was away does not take it away again.
  frmMain.Left = -20000;
  WorkOffScreen(composition.program, Progress::kCollectingRecords, [&] { frmMain.Left = 3000; });
  EXPECT_EQ(frmMain.Left, 3000);
}

TEST_F(SessionTest, NoOtherSentenceIsAnalysedWhileOneWaitsForACorrection) {
  Put({"e1", "w1"});
  composition.records.InsertOkSentence(
      {.sId = "9", .sentence = "It is fine.", .sDate = std::chrono::year{2026} / 11 / 1});
  for (const auto* message : {&Message::kWrongSentence, &Message::kEssayWaits, &Message::kEssayWaits}) {
    ExpectMessage(*message);
  }
  OnCorrection([this] {
    FrmSentences& list = *composition.frmSentences;
    list.ShowDaySentences("OKONLY", "");
    list.webHtml.inputChecked["chk1"] = true;
    list.webHtml.inputValues["rec1"] = "It is fine.";
    list.webHtml.FollowLink("cmd:passEngine");
    auto& collection = OpenCollection("w1", "N");
    Tick({1});
    machine.user.Click(collection.picButtons(2));
    EXPECT_EQ(machine.user.Expected(), 1U) << "both were refused";
    EXPECT_EQ(app.gVerdict, "##EDIT##");
    composition.frmMain->txtInput.Text = "He goes home.";
    machine.user.Press(composition.frmMain->txtInput, kKeyEnter);
  });
  SendToTheEnd("He go home.");
  EXPECT_EQ(LastEssay().newEssay, "He goes home.");
  EXPECT_THAT(Asked(), ElementsAre("He go home.", "He goes home."));
}

TEST_F(SessionTest, AsksBeforeANewEssayWhileAReportIsShown) {
  SendToTheEnd("I run.");
  ExpectMessage(Message::kNewEssay, kCancel);
  composition.frmMain->imgMenu_Click(4);
  EXPECT_FALSE(app.gOpenEssayInputEdu);
  ExpectMessage(Message::kNewEssay);
  composition.frmMain->imgMenu_Click(4);
  EXPECT_TRUE(app.gOpenEssayInputEdu && app.gEssayStartRequested);
}

TEST_F(SessionTest, ShowsAnOldEssayFromARecordAlone) {
  EXPECT_THROW(room.ShowEssay("unknown"), RunTimeError);
  EXPECT_FALSE(room.frmEssay.IsLoaded());
  EXPECT_GE(composition.frmMain->Left, 0);
  Put({"E1", "W1", "Tom's day", "N", 5, 0, "Y", "It's ok."});
  composition.frmBrowser->SpecialFunctionProc("cmd:show:E1");
  EXPECT_TRUE(Window().mViewOnly && Window().Visible());
  EXPECT_FALSE(app.gEssayReportShown);
  EXPECT_EQ(app.gEssayWorkId + app.gEssayQuiz + app.gEssayCurrent, "W1Tom's dayIt's ok.");
  EXPECT_FALSE(Window().webHtml.FollowLink("cmd:show:abc"));
  EXPECT_THAT(composition.frmBrowser->webOther.LocationURL(), HasSubstr("&checksum=abc&enginever="));
}

TEST_F(SchoolTest, ShowsTheQuestionOfAnAssignment) {
  app.gEssayWorkId = "W1";
  Window().Show();
  app.gEssayStartRequested = true;
  ExpectMessage(Message::kOwnTopic);
  machine.user.Click(Window().picButtons(2));
  app.gEssayStartRequested = false;
  machine.user.Click(Window().picButtons(2));
  EXPECT_EQ(
      composition.frmBrowser->webMain.LocationURL(),
      "http://school/p_mrv_get_essay_work.asp?key=zorbelquinter&pno=1234567890&workId=W1&mode=GETHTM&cpno=");
}

}  // namespace

}  // namespace marovane
