// The rooms together, on the real server and the real engine.
#include "checking/suggestions.h"
#include "core/key_value_file.h"
#include "platform/host/curl_http.h"
#include "tests/app/terminal_run.h"
#include "tests/checking/checking_fixture.h"
#include "tests/essay/essay_fixture.h"
#include "tests/records/record_store.h"
#include "tests/support/real_server.h"

namespace marovane {

namespace {

using namespace ::testing;

using CompositionTest = EssayTest;

TEST_F(CompositionTest, PutsTheRightWindowBehindEachDoor) {
  machine.http.Route("p_getwebhelper.asp", "");
  Composition whole(machine.machine, InstallationValues{});
  whole.program.app = app;
  whole.program.app.gAccountNo.clear();  // so that the splash uploads nothing
  std::vector<std::string> names;
  const auto note = [&](const auto&... doors) { (names.push_back(doors->AsForm().Name()), ...); };
  const Hall& hall = whole.program.hall;
  note(hall.frmMain, hall.frmSplash, hall.frmMenu, hall.frmBrowser, hall.frmSuggest, hall.frmCollocation,
       hall.frmSentences, hall.frmErrList, hall.frmErrSentence, hall.frmEssay, hall.frmDiary,
       hall.frmEssayInputEdu, hall.frmEssayInputForm, hall.frmEssayCollect, hall.frmFeedback, hall.frmSetup,
       hall.frmPassword, hall.frmBindSelect, hall.frmXQDLogin, hall.frmSyncLogin, hall.frmDebug);
  EXPECT_THAT(names, ElementsAre("frmMain", "frmSplash", "frmMenu", "frmBrowser", "frmSuggest",
                                 "frmCollocation", "frmSentences", "frmErrList", "frmErrSentence", "frmEssay",
                                 "frmDiary", "frmEssayInputEdu", "frmEssayInputForm", "frmEssayCollect",
                                 "frmFeedback", "frmSetup", "frmPassword", "frmBindSelect", "frmXQDLogin",
                                 "frmSyncLogin", "frmDebug"));
  EXPECT_EQ(&*hall.frmUpload, &*whole.frmUpload);
}

/// The program's own server, which the requests of a program to these pages reach.
class OwnServer {
 public:
  OwnServer(TestMachine& machine, AppState& app, std::initializer_list<const char*> pages)
      : account_((machine.home / "account.set").string()),
        server_(machine.loop, {"--data", machine.home / "server", "--account", account_}),
        curl_(machine.loop) {
    machine.http.RouteThrough(curl_, pages);
    app.gPublisherRoot = app.gServerUrlRoot = server_.Root();
    app.gAccountNo = ReadWriteSetFile(machine.realFiles, account_, "R", "Pno", "");
  }

 private:
  std::string account_;
  RealServer server_;
  CurlHttp curl_;
};

struct Line {
  const char* sentence;
  const char* correction = nullptr;  ///< of a faulty one
  bool isToWatch = false;
};

// 25 sentences, of which six are faulty and two are to be watched.
constexpr Line kEssay[] = {{"My name is Tom."},
                           {"I live in Taipei with my parents."},
                           {"I have two brothers."},
                           {"He go to school every day.", "He goes to school every day."},
                           {"We get up at seven."},
                           {"We have breakfast together."},
                           {"I like milk and bread."},
                           {"There is many books on the desk.", "There are many books on the desk."},
                           {"My father is a doctor."},
                           {"I have a dog, it is big.", nullptr, true},
                           {"He plays with me in the park."},
                           {"They was late yesterday.", "They were late yesterday."},
                           {"The teacher was not happy."},
                           {"We said sorry to her."},
                           {"I am agree with you.", "I agree with you."},
                           {"I read a book every week."},
                           {"My sister likes music."},
                           {"She very like apples.", "She likes apples very much."},
                           {"She can play the piano."},
                           {"I have a cat, it is small.", nullptr, true},
                           {"It sleeps on my bed."},
                           {"I look forward to see you.", "I look forward to seeing you."},
                           {"You can visit me in summer."},
                           {"We can go to the beach."},
                           {"I hope you are well."}};

std::string EssayText(const char* lineEnd) {
  std::string text;
  for (const Line& line : kEssay) text += std::string(text.empty() ? "" : lineEnd) + line.sentence;
  return text;
}

/// What both editions must have written alike.
std::vector<std::string> RowsOf(const std::filesystem::path& records) {
  base::SqliteDatabases databases;
  return Rows(
      databases, records,
      "select * from (select 'ok', sentence, '', haveHtm from oksentence order by essaySId)"
      " union all select * from (select 'err', sentence, errcode, haveHtm from errsentence order by id)"
      " union all select * from (select 'times', errcode, times, '' from mistakes order by errcode)"
      " union all select finalSet, orgEssay, newEssay, '' from essay");
}

std::vector<std::string> RowsOfTerminal() {
  const TempHome home;
  const std::string file = home / "essay.txt";
  base::PosixFiles().Write(file, EssayText("\n"), false);
  std::string corrections;
  for (const Line& line : kEssay) {
    if (line.correction != nullptr) corrections += std::string(line.correction) + "\n";
  }
  RunTerminalProgram(home, 0, {"essay", file}, corrections);
  return RowsOf(home / ".local/share/marovane/marovane/Marovane.mdb");
}

/// One essay through both editions: the terminal program, and the windows that the desktop shows.
class Editions : public EssayTest {
 protected:
  Editions() { app.gFileServerRoot = app.gServerUrlRoot; }
  std::vector<std::string> RowsOfWindows() {
    for (const Line& line : kEssay) {
      if (line.correction != nullptr) {
        ExpectMessage(Message::kWrongSentence);
        Correct(line.correction);
      }
      if (line.isToWatch) ExpectMessage(Message::kDoubtfulSentence, kNo);
    }
    ExpectMessage(Message::kEssayDone);
    Send(EssayText("\r\n"));
    EXPECT_EQ(machine.user.Expected(), 0U);
    return RowsOf(machine.home / "tmp/marovane/Marovane.mdb");
  }

 private:
  OwnServer server_{machine,
                    app,
                    {"", "p_all_webengine_get.asp", "p_passWebEngine_conn.asp", "p_getconn.asp",
                     "p_all_engine_htm_rec.asp", "p_passWebEngine.asp"}};
};

TEST_F(Editions, WriteTheSameRowsOfALongEssay) {
  const auto rows = RowsOfWindows();
  EXPECT_THAT(rows, SizeIs(Ge(25 + 6 + 5 + 1U)));
  const auto count = [&](const std::string& kind) {
    return std::ranges::count_if(rows, [&](const auto& row) { return row.starts_with(kind + "|"); });
  };
  EXPECT_EQ(count("ok"), 25);
  EXPECT_EQ(count("err"), 6);
  EXPECT_EQ(RowsOfTerminal(), rows);
}

/// Suggestions on their way over the server, and back as queries to the word bank.
class RealSuggestions : public CheckingTest {
 protected:
  RealSuggestions() {
    app.gUseWebEngineWbank = true;
    program.hall.frmSuggest.LeadsTo([this]() -> Suggestions& { return *frmSuggest; });
    program.hall.frmCollocation.LeadsTo([this]() -> WordHelper& { return *frmCollocation; });
  }

  Window<FrmCollocation> frmCollocation{[this] { return std::make_shared<FrmCollocation>(program); }};
  Window<FrmSuggest> frmSuggest{[this] { return std::make_shared<FrmSuggest>(program, frmCollocation); }};

 private:
  OwnServer server_{
      machine,
      app,
      {"p_all_webengine_get.asp", "p_passWebEngine_conn.asp", "p_passWebEngine.asp",
       "p_passWebEngine_wbank.asp", "p_getconn.asp", "p_update_useract.asp", "p_getwebhelper.asp"}};
};

TEST_F(RealSuggestions, PickedWordComesBackAsItsNearSynonyms) {
  Enter("The building is very big.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_TRUE(frmSuggest->picTab(1).Visible() && !frmSuggest->picTab(0).Visible());
  EXPECT_THAT(frmSuggest->webMain(1).Page(),
              AllOf(HasSubstr("value='big%2CSJ'"), HasSubstr("very big → huge、enormous<")));
  EXPECT_FALSE(frmSuggest->webMain(1).FollowLink("cmd:suggest:big%2CSJ"));
  ASSERT_THAT(fakes.frmBrowser.written, SizeIs(1));
  EXPECT_THAT(fakes.frmBrowser.written[0], AllOf(HasSubstr("large"), HasSubstr("\r\n</div>")));
}

TEST_F(RealSuggestions, PickedPartnerIsInTheListThatItBrings) {
  Enter("There was a big rain this morning.");
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_THAT(frmSuggest->webMain(0).Page(), HasSubstr("value='rain,CNJ'"));
  EXPECT_FALSE(frmSuggest->webMain(0).FollowLink("cmd:suggest:rain,CNJ"));
  EXPECT_THAT(frmCollocation->cboCollect.Items(), Contains(StartsWith("heavy rain")));
}

}  // namespace

}  // namespace marovane
