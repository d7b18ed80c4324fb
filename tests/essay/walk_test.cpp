// The walk under the virtual clock.
#include "core/settings.h"
#include "essay/archive.h"
#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

TEST_F(EssayTest, WalksToTheReport) {
  SendToTheEnd("He goes home.\r\nShe  doesn't go，too.");
  EXPECT_THAT(OkRows(), ElementsAre("He goes home.|N", "She doesn’t go，too.|N"));
  const EssayRow essay = LastEssay();
  EXPECT_EQ(essay.finalSet, "N");
  EXPECT_EQ(essay.newEssay, "He goes home.\r\nShe doesn’t go，too.");
  EXPECT_EQ(essay.orgEssay, essay.newEssay);
  EXPECT_THAT(Texts("select distinct essayId from oksentence"), ElementsAre(essay.essayId));
  EXPECT_THAT(Texts("select distinct essaySId from oksentence"), SizeIs(2));
  EXPECT_THAT(Window().webHtml.Page(), HasSubstr("She doesn&#39;t go，too."));
  EXPECT_TRUE(app.gEssayReportShown);
  EXPECT_FALSE(app.gEssayMode || Window().TopMost);
  EXPECT_EQ(composition.frmMain->Left, -20000);
}

TEST_F(EssayTest, WhatBecomesOfEachSentenceIsSaidInWords) {
  room.StartOwnEssay("My day");
  std::vector<std::string> said;
  const auto listen = Window().txtInput.Description.Watch([&said](const std::string& words) {
    if (!words.empty()) said.push_back(words);
  });
  CorrectRefused("He goes home.");
  replies["She go home."] = replies["He go home."];
  ExpectMessage(Message::kWrongSentence);
  BreakOff();
  SendFrom(Window(), "I run. He go home. She go home.");
  EXPECT_THAT(said, ElementsAre("句子正確：I run.", "句子正確：He goes home.", "已中斷批改"));
}

TEST_F(EssayTest, RefusesATextBeforeAnythingIsWritten) {
  const std::pair<std::string, const Message&> cases[] = {{"   ", Message::kEnterEssay},
                                                          {"He 去.", Message::kBadSigns}};
  for (const auto& [text, message] : cases) {
    ExpectMessage(message);
    Send(text);
    EXPECT_THAT(Texts("select essayId from essay"), IsEmpty()) << message.text;
    EXPECT_FALSE(app.gEssayMode) << message.text;
    EXPECT_EQ(Window().txtInput.Text().size(), text == "   " ? 2 : text.size()) << message.text;
  }
  EXPECT_THAT(machine.http.requests, IsEmpty());
}

TEST_F(EssayTest, CorrectsASentenceUnderItsId) {
  ExpectMessage(Message::kWrongSentence);
  OnCorrection([this] {
    FrmMain& frmMain = *composition.frmMain;
    EXPECT_GT(frmMain.Left, 0);
    EXPECT_EQ(Window().Left, -20000);
    EXPECT_EQ(frmMain.txtInput.SelText(), "He go home.");
    EXPECT_FALSE(frmMain.imgMenu(9).Visible);
    EXPECT_EQ(app.gVerdict, "##EDIT##");
    frmMain.txtInput.Text = " He goes home. ";
    machine.user.Press(frmMain.txtInput, kKeyEnter);
  });
  SendToTheEnd("I run. He go home. I run.");
  EXPECT_THAT(OkRows(), ElementsAre("I run.|N", "He goes home.|N", "I run.|N"));
  EXPECT_THAT(ErrRows(), ElementsAre("*He go* home .|AG01|1"));
  EXPECT_EQ(Mistakes("AG01"), 1);
  EXPECT_THAT(Texts("select essaySId from errsentence"),
              ElementsAre(Texts("select essaySId from oksentence where sentence like 'He%'").front()));
  EXPECT_EQ(LastEssay().newEssay, "I run. He goes home. I run.");
  EXPECT_EQ(LastEssay().orgEssay, "I run. He go home. I run.");
  // The second "I run." passed from the record.
  EXPECT_THAT(Asked(), ElementsAre("I run.", "He go home.", "He goes home."));
  EXPECT_TRUE(composition.frmMain->imgMenu(9).Visible);
  EXPECT_FALSE(composition.frmMain->imgMenu(10).Visible);
}

TEST_F(EssayTest, CorrectsEverySentenceThatIsEqual) {
  CorrectRefused("He goes home.");
  SendToTheEnd("He go home. I run. He go home.");
  EXPECT_EQ(LastEssay().newEssay, "He goes home. I run. He goes home.");
  EXPECT_THAT(ErrRows(), SizeIs(1));
  EXPECT_THAT(Asked(), ElementsAre("He go home.", "He goes home.", "I run."));
}

TEST_F(EssayTest, CountsEachRepeatedMistake) {
  replies["He go home."] = "OK_1#AG01#page.htm#He go home.";  // so that the record knows it
  CorrectRefused("He go home.");
  CorrectRefused("He goes home.");
  SendToTheEnd("He go home.");
  EXPECT_THAT(ErrRows(), ElementsAre("He go home.|AG01|1", "He go home.|AG01|1"));
  EXPECT_THAT(Texts("select times from mistakes"), ElementsAre("2"));
  EXPECT_THAT(Texts("select distinct essaySId from errsentence"), SizeIs(1));
  EXPECT_THAT(Asked(), ElementsAre("He go home.", "He goes home."));
}

TEST_F(EssayTest, LeavesAWarningToTheLearner) {
  replies["He go home."] = "OK_2#AG01#page.htm#*He go* home .";
  ExpectMessage(Message::kDoubtfulSentence, kNo);
  SendToTheEnd("He go home.");
  EXPECT_THAT(OkRows(), ElementsAre("He go home.|2"));
  EXPECT_EQ(Mistakes("AG01"), 1);

  replies["She go home."] = replies["He go home."];
  ExpectMessage(Message::kDoubtfulSentence, kYes);
  OnCorrection([this] {
    EXPECT_TRUE(Window().Left > 0 && Window().Visible()) << "unlike after an error";
    composition.frmMain->txtInput.Text = "She goes home.";
    machine.user.Press(composition.frmMain->txtInput, kKeyEnter);
  });
  SendToTheEnd("He go home. She go home.");
  EXPECT_THAT(Window().webHtml.Page(), AllOf(HasSubstr("She goes home."), Not(HasSubstr("She go home."))));
  EXPECT_THAT(OkRows(), ElementsAre("He go home.|2", "He go home.|2", "She go home.|2", "She goes home.|N"));
  EXPECT_THAT(Asked(), ElementsAre("He go home.", "She go home.", "She goes home."));
}

TEST_F(EssayTest, AsksAgainWhenTheBoxIsEmptyOrTheTextWouldNotEnd) {
  std::deque<std::string> attempts{"  ", "He goes home", "He goes home. All is well."};
  Timer learner(machine.loop, 1000);
  learner.onTick = [&] {
    EXPECT_EQ(app.gVerdict, "##EDIT##");
    composition.frmMain->txtInput.Text = attempts.front();
    attempts.pop_front();
    learner.Enabled = !attempts.empty();
    machine.user.Press(composition.frmMain->txtInput, kKeyEnter);
  };
  OnCorrection([&] { learner.Enabled = true; });
  for (const Message* message :
       {&Message::kWrongSentence, &Message::kWrongSentence, &Message::kNoEndMark, &Message::kEssayDone}) {
    ExpectMessage(*message);
  }
  Send("He go home.");
  EXPECT_THAT(OkRows(), ElementsAre("He goes home.|N", "All is well.|N"));
}

TEST_F(EssayTest, ReadsASentenceOverALineEndWithOneBlank) {
  CorrectRefused("He goes\r\nhome.");
  SendToTheEnd("He go \r\nhome.\r\nI run.");
  EXPECT_THAT(Asked(), ElementsAre("He go home.", "He goes home.", "I run."));
  EXPECT_EQ(LastEssay().orgEssay, "He go home.\r\nI run.");
  EXPECT_EQ(LastEssay().newEssay, "He goes home.\r\nI run.");
}

/// A walk whose window goes away while it waits.
class LostWindowTest : public SchoolTest {
 protected:
  LostWindowTest() {
    replies["It is odd."] = "OK_7#";
    Put({"E1", "W1"});  // "I run." is on record
    closing_.onTick = [this] {
      closing_.Enabled = false;
      room.frmEssay.Unload();
    };
  }

  void LoseAfter(int milliseconds) {
    closing_.Interval = milliseconds;
    closing_.Enabled = true;
  }
  void LoseAtCorrection() {
    OnCorrection([this] { room.frmEssay.Unload(); });
  }
  /// Sends a text as the answer to an assignment.
  void Answer(const std::string& text) {
    room.StartOwnEssay("Assigned");
    app.gEssayWorkId = "W2";
    app.gEssayStartRequested = false;
    SendFrom(Window(), text);
  }

 private:
  Timer closing_{machine.loop, 1};
};

TEST_F(LostWindowTest, EndsTheWalkWhateverItWaitsFor) {
  const struct {
    const char *what, *text, *finalSet;
    std::function<void()> prepare;
  } kCases[] = {
      {"the eye", "I run. I walk.", "A", [this] { LoseAfter(20); }},
      {"a verdict that does not come", "It is odd. I walk.", "A", [this] { LoseAfter(2000); }},
      {"the engine", "They walk.", "A",
       [this] {
         LoseAfter(2000);
         machine.http.Route("p_passWebEngine.asp", "ERR_ENGINE");
       }},
      {"a correction", "He go home.", "A",
       [this] {
         ExpectMessage(Message::kWrongSentence);
         LoseAtCorrection();
       }},
      {"an answer", "She go home.", "A",
       [this] {
         replies["She go home."] = "OK_2#AG01#page.htm#*She go* home .";
         ExpectMessage(Message::kDoubtfulSentence, kYes, [this] { room.frmEssay.Unload(); });
       }},
      {"the server", "I run.", "N",
       [this] {
         machine.http.Route("p_getconn.asp", "ERR");
         ExpectMessage(Message::kEssayDone, kOk, [this] { LoseAfter(4000); });
       }},
      {"the hand-in", "I run.", "N",
       [this] {
         machine.http.Route("p_set_essay_work_finalset.asp", "ERR");
         ExpectMessage(Message::kEssayDone);
         ExpectMessage(Message::kHandInNow, kYes, [this] { LoseAfter(4000); });
       }},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.what);
    machine.http.Route("p_getconn.asp", "ONLINE 2026/11/5");
    RouteEngine();
    const auto essays = Texts("select essayId from essay").size();
    c.prepare();
    const auto start = machine.loop.Elapsed();
    Answer(c.text);
    EXPECT_LT((machine.loop.Elapsed() - start).count(), 10'000);
    EXPECT_FALSE(room.frmEssay.IsLoaded()) << "it does not come back";
    EXPECT_FALSE(app.gEssayMode);
    EXPECT_GE(composition.frmMain->Left, 0);
    EXPECT_TRUE(composition.frmMain->imgMenu(9).Visible && !composition.frmMain->imgMenu(10).Visible);
    EXPECT_EQ(machine.user.Expected(), 0U);
    ASSERT_EQ(Texts("select essayId from essay").size(), essays + 1);
    EXPECT_EQ(LastEssay().finalSet, c.finalSet);
    EXPECT_EQ(LastEssay().newEssay, c.text);
  }
}

TEST_F(LostWindowTest, HandsInWhatWasWalkedThroughWhateverIsClickedMeanwhile) {
  const char* const handIn = "p_set_essay_work_finalset.asp";
  machine.http.Queue(handIn, "ERR");
  machine.http.Route(handIn, "OK");
  Timer click(machine.loop, 1000);
  click.onTick = [&] {
    click.Enabled = false;
    OpenTopics().webHtml2.FollowLink("cmd:wid:W1");
    Window().picCommands_Click(1);
  };
  CorrectRefused("He goes home.");
  ExpectMessage(Message::kEssayDone, kOk, [this] { OpenTopics().webHtml.FollowLink("cmd:tab:2"); });
  ExpectMessage(Message::kHandInNow, kYes, [&] { click.Enabled = true; });
  ExpectMessage(Message::kHandedIn);
  Answer("He go home.");
  EXPECT_FALSE(click.Enabled);
  EXPECT_THAT(machine.http.Bodies(handIn),
              AllOf(SizeIs(2), Each(EndsWith("essayId=" + LastEssay().essayId + "&workId=W2"))));
  EXPECT_EQ(LastEssay().finalSet, "Y");
  EXPECT_THAT(Window().webHtml.Page(), HasSubstr("He goes home."));
  EXPECT_EQ(Window().mShown.workId, "W2");
}

TEST_F(EssayTest, KeepsOldVerdictsWithoutTheEngine) {
  const auto day = std::chrono::year{2026} / 11 / 1;
  composition.records.InsertOkSentence({.sId = "1", .sentence = "It's fine.", .sDate = day, .haveHtm = "2"});
  composition.records.InsertErrSentence(
      {.id = "2", .sentence = "It's bad.", .errcode = "AG01", .sDate = day});
  composition.records.InsertMistake("AG01");
  ExpectMessage(Message::kWrongSentence);
  BreakOff();
  const auto start = machine.loop.Elapsed();
  Send("It's fine. It's bad.");
  EXPECT_THAT(Asked(), IsEmpty());
  EXPECT_THAT(OkRows(), ElementsAre("It’s fine.|2", "It’s fine.|2"));
  EXPECT_THAT(ErrRows(), ElementsAre("It’s bad.|AG01|N", "It’s bad.|AG01|N"));
  EXPECT_THAT(Texts("select times from mistakes"), ElementsAre("2"));
  EXPECT_GE((machine.loop.Elapsed() - start).count(), 100);
}

TEST_F(EssayTest, StopsInEveryState) {
  replies["She go home."] = "OK_2#AG01#page.htm#*She go* home .";
  replies["It is odd."] = "OK_7#";
  // While a sentence from the record is highlighted.
  Put({"E1", "W1"});
  Timer soon(machine.loop, 20);
  soon.onTick = [&] {
    soon.Enabled = false;
    machine.user.Click(Window().picButtons(0));
  };
  soon.Enabled = true;
  Send("I run. I walk.");
  EXPECT_EQ(LastEssay().finalSet, "A");
  EXPECT_THAT(Asked(), IsEmpty());
  // At a correction, after an error and after a warning.
  const struct {
    const char* text;
    const Message& message;
    MessageButton answer;
  } corrections[] = {{"He go home. I walk.", Message::kWrongSentence, kOk},
                     {"She go home.", Message::kDoubtfulSentence, kYes}};
  for (const auto& [text, message, answer] : corrections) {
    ExpectMessage(message, answer);
    BreakOff();
    Send(text);
    EXPECT_EQ(LastEssay().finalSet, "A") << text;
    EXPECT_THAT(Asked(), Not(Contains("I walk."))) << text;
  }
  // While nothing but a stop can end the wait for a verdict.
  soon.Interval = 2000;
  soon.Enabled = true;
  Send("It is odd. I walk.");
  EXPECT_EQ(ErrRows().back(), "|0|N");
  EXPECT_THAT(Asked(), Not(Contains("I walk.")));
  // Between the replies of an engine that finds nothing wrong, by the button and by Escape.
  const std::pair<const char*, std::function<void()>> stops[] = {
      {"They run. We walk.", [this] { machine.user.Click(Window().picButtons(0)); }},
      {"You run. We walk.", [this] { machine.user.Press(Window().txtInput, kKeyEscape); }},
  };
  for (const auto& [text, stop] : stops) {
    machine.http.Queue("p_passWebEngine.asp", [&, stop = stop](const base::HttpRequest& request) {
      machine.loop.Post(stop);
      return base::HttpResponse{200, "text/html; charset=big5", "OK_0#0##0#0", request.url};
    });
    Send(text);
    EXPECT_EQ(LastEssay().finalSet, "A") << text;
    EXPECT_THAT(Asked(), Not(Contains("We walk."))) << text;
  }
  EXPECT_FALSE(app.gEssayMode);
  EXPECT_THAT(Window().webHtml.Page(), HasSubstr("這篇短文批改過程中被中斷"));
}

TEST_F(EssayTest, ShowsThePageOfAFaultFreshAndLaterFromTheArchive) {
  const auto send = [this](const Matcher<const std::string&>& address) {
    ExpectMessage(Message::kWrongSentence, kOk,
                  [&] { EXPECT_THAT(composition.frmBrowser->webOther.LocationURL(), address); });
    BreakOff();
    Send("He go home.");
  };
  send("http://engine/page.htm");
  composition.records.Db().RunScript(
      "update errsentence set sentence = 'He go home.'");  // without marks it is known
  send(AllOf(HasSubstr("http://school/p_all_engine_htm_show.asp?key=zorbelquinter&pnomd5="),
             HasSubstr("&checksum=" + ArchiveChecksum("He go home.") + "&enginever=&tid=")));
}

TEST_F(EssayTest, AcceptsNoKeysAndNoSecondWalkWhileItWaits) {
  ExpectMessage(Message::kWrongSentence, kOk, [this] {
    for (auto* const event : {&Window().txtInput.KeyDown, &Window().txtInput.KeyPress}) {
      int key = 'A';
      event->Raise(key);
      EXPECT_EQ(key, 0);
    }
    EXPECT_FALSE(Window().picButtons(1).Visible || Window().imgClose.Visible);
    Window().picButtons_Click(1);
    Window().QueryClose.Raise();
    room.ShowEssay("1");  // as a link in a page would
  });
  BreakOff();
  Send("He go home.");
  EXPECT_THAT(Texts("select essayId from essay"), SizeIs(1));
}

TEST_F(EssayTest, EndsTheProgramWhenThereIsNoEngine) {
  machine.http.Queue("p_all_webengine_get.asp", "ERR");
  // A connection that breaks is a failed try like any other.
  machine.http.RouteToNowhere("p_all_webengine_get.asp");
  ExpectMessage(Message::kNoEngineAddress);
  ExpectMessage(Message::kNoEngineAddress, kCancel);
  EXPECT_THROW(Send("He goes home."), ProgramEnd);
  EXPECT_THAT(machine.http.Bodies("p_all_webengine_get.asp"), SizeIs(20));
  EXPECT_EQ(LastEssay().finalSet, "A");
  EXPECT_TRUE(machine.loop.HasEnded());
}

TEST_F(EssayTest, GivesTheWindowBackWhicheverStatementFails) {
  int failures = 0;
  for (bool fails = true; fails;) {
    if (machine.user.Expected() == 0) ExpectMessage(Message::kEssayDone);
    machine.databases.fault.Reset();
    machine.databases.fault.FailAt(++failures);
    try {
      Send("He goes home. I run.");
      fails = false;
    } catch (const RunTimeError&) {
      EXPECT_FALSE(app.gEssayMode || Window().mAnalysing) << failures;
      EXPECT_EQ(Window().txtInput.Text(), "He goes home. I run.") << failures;
      EXPECT_TRUE(Window().picButtons(1).Visible && Window().imgClose.Visible) << failures;
      EXPECT_GT(Window().Left, 0) << failures;
    }
  }
  machine.databases.fault.Reset();
  EXPECT_GT(failures, 9);
  EXPECT_EQ(LastEssay().finalSet, "N");
}

TEST_F(EssayTest, UploadsAtTheEndAndTriesAgain) {
  WriteNeedSync(composition.program, "Y");
  machine.http.Route("p_getconn.asp", "ERR");
  ExpectMessage(Message::kEssayDone);
  ExpectMessage(Message::kUploadFailed, kYes);
  ExpectMessage(Message::kUploadFailed, kNo);
  const auto start = machine.loop.Elapsed();
  Send("I run.");
  EXPECT_THAT(machine.http.Bodies("p_getconn.asp"), SizeIs(20));
  EXPECT_GE((machine.loop.Elapsed() - start).count(), 60'000);
  EXPECT_THAT(upload.modes, IsEmpty());
  EXPECT_EQ(ReadSetup(composition.program, "NeedSync"), "N");
  EXPECT_THAT(Texts("select upload from oksentence"), Each("N"));

  machine.http.Queue("p_getconn.asp", "ERR");
  machine.http.Route("p_getconn.asp", "ONLINE 2026/11/5");
  SendToTheEnd("I walk.");
  EXPECT_THAT(upload.modes, ElementsAre("UPLOAD"));
}

TEST_F(EssayTest, EscapeEndsTheTriesAtTheEndAndTheReportComesAllTheSame) {
  const char* const handIn = "p_set_essay_work_finalset.asp";
  const auto breaksOffIn = [this](const char* page) {
    machine.http.breaksOff = [page](const base::HttpRequest& request) { return request.url.ends_with(page); };
  };
  Timer escape(machine.loop, 1000);
  escape.onTick = [&] {
    escape.Enabled = false;
    machine.loop.BreakOff();
  };
  const struct {
    const char* what;
    bool isHandedIn;  // the upload goes well, and the hand-in is broken off
    std::function<void()> whenDone;
  } kCases[] = {
      {"upload, in a request", false, [&] { breaksOffIn("p_getconn.asp"); }},
      {"upload, between two", false,
       [&] {
         machine.http.Route("p_getconn.asp", "ERR");
         escape.Enabled = true;
       }},
      {"hand-in, in a request", true, [&] { breaksOffIn(handIn); }},
      {"hand-in, between two", true,
       [&] {
         machine.http.Route(handIn, "ERR");
         escape.Enabled = true;
       }},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.what);
    machine.http.Route("p_getconn.asp", "ONLINE 2026/11/5");
    machine.http.breaksOff = nullptr;
    room.StartOwnEssay("Assigned");
    app.gEssayStartRequested = !c.isHandedIn;
    ExpectMessage(Message::kEssayDone, kOk, c.isHandedIn ? [] {} : c.whenDone);
    if (c.isHandedIn) {
      ExpectMessage(Message::kHandInNow, kYes, c.whenDone);
      ExpectMessage(Message::kNotHandedIn);
    }
    const auto start = machine.loop.Elapsed();
    SendFrom(Window(), "I run.");
    EXPECT_LT((machine.loop.Elapsed() - start).count(), 5'000);
    EXPECT_EQ(LastEssay().finalSet, "N");
    EXPECT_TRUE(Window().webHtml.Visible) << "the report";
    EXPECT_FALSE(Window().txtInput.Visible) << "under it";
    EXPECT_FALSE(app.gEssayMode || Window().mAnalysing);
  }
}

TEST_F(EssayTest, HandsInTheAnswerToAnAssignment) {
  const char* const handIn = "p_set_essay_work_finalset.asp";
  const auto walkAssignment = [this](const std::string& workId) {
    room.StartOwnEssay("Assigned");
    app.gEssayWorkId = workId;
    app.gEssayStartRequested = false;
    SendFrom(Window(), "I run.");
  };
  machine.http.Queue(handIn, "ERR");
  machine.http.Queue(handIn, "OK");
  ExpectMessage(Message::kEssayDone);
  ExpectMessage(Message::kHandInNow, kYes);
  ExpectMessage(Message::kHandedIn);
  walkAssignment("W1");
  EXPECT_EQ(LastEssay().finalSet, "Y");
  EXPECT_FALSE(app.gEssayNoListReturn);
  ExpectMessage(Message::kEssayDone);
  walkAssignment("W1");  // handed in already: not asked again
  EXPECT_EQ(LastEssay().finalSet, "N");
  machine.http.RouteToNowhere(handIn);
  ExpectMessage(Message::kEssayDone);
  ExpectMessage(Message::kHandInNow, kYes);
  ExpectMessage(Message::kNotHandedIn);
  const auto start = machine.loop.Elapsed();
  walkAssignment("W2");
  EXPECT_GE((machine.loop.Elapsed() - start).count(), 30'000) << "three seconds after each refusal";
  EXPECT_EQ(LastEssay().finalSet, "N");
  EXPECT_THAT(machine.http.Bodies(handIn), SizeIs(12));
}

}  // namespace

}  // namespace marovane
