#include "base/text.h"
#include "core/error_report.h"
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;
using namespace ::testing;

constexpr const char* kPage = "p_passWebEngine.asp";

class WebEngineTest : public CheckingTest {
 protected:
  void ExpectStop(const std::string& text) {
    EXPECT_EQ(app.gVerdict, "STOP");
    EXPECT_THAT(Recorded(), IsEmpty());
    EXPECT_THAT(fakes.frmBrowser.visited, IsEmpty());
    EXPECT_EQ(Main().txtInput.SelColor(), 0U) << "the colour stays";
    ExpectIdle(text);
  }
};

TEST_F(WebEngineTest, RequestHoldsEachField) {
  app.gLastInput = "left over";
  Enter("I am");
  ASSERT_THAT(machine.http.Bodies(kPage), SizeIs(1));
  std::string body = machine.http.Bodies(kPage)[0];
  body.erase(body.find("&p3=") + 4, 6);  // the run code
  EXPECT_EQ(body,
            "key=zorbelquinter&pno=4711&pnomd5=b52340b4de4566b804c9880aa0b4af5f"
            "&checksum=75524e86eb8dcc20eb8fdd070916e390&p1=beta&p2=0&p3=&cidx=0&s=I%20am");
  EXPECT_EQ(machine.http.requests.back().url, "http://engine/p_passWebEngine.asp");
  EXPECT_EQ(app.gLastInput, "");
  EXPECT_EQ(ReadWriteSetFile(machine.realFiles, app.gRegistryFile, "R", "sentence", ""), "I am");
}

TEST_F(WebEngineTest, BlanksGoOutInPairsMadeOne) {
  const std::pair<const char*, const char*> cases[] = {
      {"It’s  a，b．", "It's a,b."}, {"a   b", "a  b"}, {"a    b", "a  b"}, {" a ", " a "}};
  for (const auto& [typed, sent] : cases) {
    Pass(typed);
    EXPECT_EQ(Main().txtInput.Text(), typed) << "the text is the learner's";
    EXPECT_THAT(machine.http.Bodies(kPage).back(), EndsWith("&s=" + base::Replace(sent, " ", "%20")));
  }
}

TEST_F(WebEngineTest, BadCharactersReachNoEngine) {
  for (const char* bad : {"He said {ok}.", "a|b", "a~", "♥"}) {
    app.gVerdict = "before";
    ExpectMessage(Message::kBadSigns);
    Enter(bad);
    EXPECT_EQ(app.gVerdict, "before") << bad;
    EXPECT_EQ(machine.windows.Focused(), &Main().txtInput);
    EXPECT_THAT(machine.http.requests, IsEmpty());
    EXPECT_FALSE(machine.realFiles.FileExists(app.gRegistryFile)) << "nothing has been written";
    ExpectIdle(bad);
  }
}

TEST_F(WebEngineTest, SilenceOfThirtySecondsStopsTheCheck) {
  machine.http.Route(kPage, "<html>OK_0</html>");
  ExpectMessage(Message::kEngineTimeout);
  const auto before = machine.loop.Elapsed();
  app.gVerdict = "PASS";
  Enter("He goes.");
  EXPECT_THAT((machine.loop.Elapsed() - before) / 1ms, AllOf(Ge(30'000), Le(31'000)));
  ExpectStop("He goes.");
  EXPECT_EQ(NeedSync(), "Y") << "Enter itself notes it";
  WriteSetup(program, "NeedSync", "");
  machine.http.Route(kPage, "ERR");
  ExpectMessage(Message::kEngineTimeout);
  Pass("He goes.");
  EXPECT_EQ(NeedSync(), "") << "the check does not";
}

TEST_F(WebEngineTest, EscapeEndsACheckWithoutAMessage) {
  for (const char* const page : {"p_passWebEngine_conn.asp", kPage}) {
    machine.http.breaksOff = [page](const base::HttpRequest& request) { return request.url.ends_with(page); };
    const auto before = machine.loop.Elapsed();
    Enter("He goes.");
    EXPECT_LE(machine.loop.Elapsed() - before, 300ms) << page;
    ExpectStop("He goes.");
    EXPECT_EQ(Main().txtFocus.Description(), "已中斷檢查")
        << "for those who do not see that the box has gone";
  }
  machine.http.breaksOff = nullptr;
  Enter("He goes.");
  EXPECT_EQ(app.gVerdict, "PASS");
}

TEST_F(WebEngineTest, UnknownKindOfAnswerIsRecordedWithNothingKnown) {
  for (const char* reply : {"OK_7#A1#p.htm#x", "OK_"}) {
    machine.http.Route(kPage, reply);
    app.gVerdict = "before";
    Enter("He goes.");
    EXPECT_EQ(app.gVerdict, "before") << reply;
    EXPECT_EQ(fakes.frmBrowser.visited.back(), "2 http://engine/");
  }
  EXPECT_THAT(Recorded(), ElementsAre("err||0|2026-11-05|N|0|0|N", "err||0|2026-11-05|N|0|0|N", "0|2"));
}

TEST_F(WebEngineTest, APasswordThatTheServerHasRefusedIsToldAndAskedFor) {
  app.gAccountNo = "4711";
  machine.http.Route("p_mrv_get_essay_work.asp", "ERR_LOGIN");
  machine.http.Route("p_getauthwithpw.asp", "ERR_WRONG_PASSWORD");
  EXPECT_EQ(program.proof.Ask("p_mrv_get_essay_work.asp", {}), "ERR_LOGIN");
  ExpectMessage(Message::kWrongPassword);
  Enter("He goes to school.");
  EXPECT_TRUE(fakes.frmPassword.Visible());
  EXPECT_THAT(machine.http.Bodies("p_passWebEngine.asp"), IsEmpty());
  ExpectIdle("He goes to school.");
}

TEST_F(WebEngineTest, PasswordGateComesBeforeTheRequest) {
  app.gAccountPassword.clear();
  Enter("He goes.");
  EXPECT_EQ(app.gAccountNo, "4711") << "the number was taken from the file";
  EXPECT_TRUE(fakes.frmPassword.Visible());
  EXPECT_THAT(machine.http.requests, IsEmpty());
  ExpectStop("He goes.");

  app.gEdition = "XQD";
  app.gXqdLoginOk = true;
  app.gAccountNo = "campus";
  Enter("He goes.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_EQ(app.gAccountNo, "campus") << "the other edition has no gate";
}

TEST_F(WebEngineTest, CheckClearsTheEssayUnlessItBelongsToOne) {
  machine.http.Route(kPage, "OK_1#A1#p.htm#He *go*.");
  const auto essay = [this] {
    return app.gEssayId + app.gEssayWorkId + app.gEssayQuiz + app.gEssayOriginal + app.gEssaySentence;
  };
  app.gEssayId = app.gEssayWorkId = app.gEssayQuiz = app.gEssayOriginal = app.gEssaySentence = "x";
  app.gEssayMode = true;
  Main().Show();
  machine.user.Focus(Main().txtInput);
  app.gAccountPassword.clear();  // no gate either
  Pass("He go.");
  EXPECT_EQ(app.gVerdict, "ERRS");
  EXPECT_EQ(essay(), "xxxxx");
  EXPECT_THAT(fakes.frmBrowser.visited, IsEmpty());
  EXPECT_EQ(NeedSync(), "");
  EXPECT_EQ(Main().txtInput.SelColor(), kRed);
  EXPECT_THAT(machine.http.Bodies(kPage).back(), HasSubstr("&p3=50"));

  app.gEssayMode = false;
  app.gAccountPassword = "pw";
  app.gOpenEssay = true;
  Enter("He go.");
  EXPECT_EQ(essay(), "xxxxx") << "an essay that is being typed keeps its topic";
  app.gOpenEssay = false;
  Enter("He go.");
  EXPECT_EQ(essay(), "");
  EXPECT_EQ(app.gEssaySentenceNo, 1);
}

TEST_F(WebEngineTest, DetailMessageNamesTheEngine) {
  app.gDetailMessage = true;
  std::string shown;
  machine.http.Route(kPage, [&](const base::HttpRequest& request) {
    shown = program.frmMessage->lblMessage.Caption();
    EXPECT_FALSE(Main().Enabled());
    EXPECT_TRUE(program.frmMessage->IsProgressBox());
    return base::HttpResponse{200, "", "OK_0##p.htm", request.url};
  });
  Enter("He goes.");
  EXPECT_EQ(shown, "\r\n正在分析您的句子中...請稍候....\r\nhttp://engine/");
  ExpectIdle("He goes.");

  app.gEssayMode = true;
  Main().PassStringToEngine();
  ExpectIdle("He goes.");
}

TEST_F(WebEngineTest, FailingRecordIsReportedAndNothingTypedIsLost) {
  ReportUnhandledErrors(program);
  machine.http.Route(kPage, "OK_1#A1#p.htm#He *go*.");
  Enter("He go.");
  machine.databases.fault.Reset();
  Enter("He go.");
  const int statements = machine.databases.fault.Steps();
  ASSERT_GE(statements, 3) << "a row, a count, a tally";
  for (int step = 1; step <= statements; ++step) {
    FailStatement(step);
    ExpectMessage(Message::kUnexpectedError);
    Enter("He go.");
    ExpectIdle("He go.");
  }
  Enter("He go.");
  EXPECT_EQ(app.gVerdict, "ERRS") << "the next check works";
}

TEST_F(WebEngineTest, TransferThatBreaksAfterTheProbeIsNoAnswer) {
  ReportUnhandledErrors(program);
  machine.http.RouteToNowhere(kPage);
  ExpectMessage(Message::kEngineTimeout);
  Enter("He goes.");
  EXPECT_THAT(Recorded(), IsEmpty());
  ExpectIdle("He goes.");
}

TEST(RunCode, IsTwoNumbersAndTheirSum) {
  EXPECT_EQ(RunCode(7, 41), "074148");
  EXPECT_EQ(RunCode(50, 49), "504999");
  std::set<int> first, second, essay;
  for (int i = 0; i < 3000; ++i) {
    for (const bool isEssay : {false, true}) {
      const std::string code = MakeRunCode(isEssay);
      const int a = std::stoi(code.substr(0, 2));
      const int b = std::stoi(code.substr(2, 2));
      ASSERT_EQ(code, RunCode(a, b));
      (isEssay ? essay : first).insert(a);
      second.insert(b);
    }
  }
  EXPECT_THAT(essay, ElementsAre(50));
  for (const auto& drawn : {first, second}) {
    EXPECT_GE(drawn.size(), 40U);
    EXPECT_THAT(drawn, Each(AllOf(Ge(1), Le(49))));
  }
}

}  // namespace

}  // namespace marovane
