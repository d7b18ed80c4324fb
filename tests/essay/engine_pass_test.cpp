// What the passes through the engine record and file.
#include "core/key_value_file.h"
#include "essay/walk_steps.h"
#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr const char* kEngine = "tolvex2.exe";

/// One sentence, as the walk hands it over.
class EnginePassTest : public EssayTest {
 protected:
  EnginePassTest() {
    app.gWebEngineRoot = "http://engine/";
    app.gEssayId = "E1";
    app.gEssaySId = "S1";
    app.gEssayMode = true;
    Window().Show();
    Window().mAnalysing = true;
    app.gEssayCurSentence = "It's he go.";
  }

  void Pass() {
    app.gVerdict.clear();
    essay_walk::PassStringToEngineEssay(room);
  }
  void ExpectStop() {
    EXPECT_EQ(app.gVerdict, "STOP");
    EXPECT_TRUE(OkRows().empty() && ErrRows().empty());
  }
  std::vector<std::string> Posts() const { return machine.http.Bodies("p_all_engine_htm_rec.asp"); }

  /// Has the local engine answer by these keys after half a second; a page is written when one is given.
  void InstallEngine(const std::map<std::string, std::string>& keys, const std::string& page = "") {
    app.gUseWebEngine = false;
    std::filesystem::create_directories(app.gEngineDir);
    machine.realFiles.Write(app.gEngineDir + kEngine, "", false);
    machine.processes.Install(
        kEngine, std::chrono::milliseconds{500}, [this, keys, page](const base::ProcessStart&) {
          sentenceInFile = ReadWriteSetFile(machine.files, app.gRegistryFile, "R", "sentence", "");
          for (const auto& [key, value] : keys) {
            ReadWriteSetFile(machine.files, app.gRegistryFile, "W", key, value);
          }
          if (page.empty()) return;
          machine.realFiles.Write(PagePath(), page, false);
          ReadWriteSetFile(machine.files, app.gRegistryFile, "W", "htm4chk", PagePath());
        });
  }
  std::string PagePath() const { return app.gEngineDir + "tmp1.htm"; }

  std::string sentenceInFile;
};

TEST_F(EnginePassTest, RecordsWhatTheWebEngineSays) {
  using Rows = std::vector<std::string>;
  const char* const found = "<p>finding</p>";
  const char* const none = "\xA5\xBB\xA5\x79\xA4\x6C\xA8\x53\xA6\xB3\xB5\x6F\xB2\x7B\xBF\xF9\xBB\x7E";
  const struct {
    const char *reply, *page, *verdict;
    Rows ok, err;
    int tally;
    std::size_t posts;
  } cases[] = {
      {"OK_0#0#page.htm#0#0", none, "PASS", {"It’s he go.|N"}, {}, 0, 0},
      {"OK_0#0#", found, "PASS", {"It’s he go.|N"}, {}, 0, 0},
      {"OK_1#!AG01!#page.htm# It's *he go* . ", found, "ERRS", {}, {"It’s *he go* .|AG01|1"}, 1, 1},
      {"OK_1##page.htm#x", found, "ERRS", {}, {"x|0|1"}, 0, 1},
      {"OK_1#AG01#gone.htm#x", found, "ERRS", {}, {"x|AG01|N"}, 1, 0},
      {"OK_2#AG01#page.htm#It's *he go* .", found, "WARN", {"It’s he go.|2"}, {}, 1, 1},
      {"OK_2#AG01##x", found, "WARN", {"It’s he go.|N"}, {}, 1, 0},
      {"OK_9#AG01#page.htm#x", found, "", {}, {"|0|N"}, 0, 0},
  };
  machine.http.Route("gone.htm", "no such page", 404);
  for (const auto& each : cases) {
    SCOPED_TRACE(each.reply);
    composition.records.Db().RunScript(
        "delete from oksentence; delete from errsentence; delete from mistakes");
    machine.http.requests.clear();
    machine.http.Route("page.htm", each.page);
    replies[app.gEssayCurSentence] = each.reply;
    Pass();
    EXPECT_EQ(app.gVerdict, each.verdict);
    EXPECT_EQ(OkRows(), each.ok);
    EXPECT_EQ(ErrRows(), each.err);
    EXPECT_EQ(Mistakes("AG01"), each.tally);
    EXPECT_THAT(Posts(), SizeIs(each.posts));
    EXPECT_EQ(app.gEssayPageChecksum.empty(), each.posts == 0);
  }
  EXPECT_THAT(Asked(), ElementsAre("It's he go."));
}

TEST_F(EnginePassTest, SendsTheRequestAndThePage) {
  replies[app.gEssayCurSentence] = "OK_1#AG01#page.htm#x";
  const std::pair<const char*, const char*> pages[] = {
      {"<html><head><title>t</title></head><BODY class='x'><p>finding</p></BODY></html>",
       "%3Cp%3Efinding%3C%2Fp%3E"},
      {"<body>open", "open"},
      {"<p>no body</p>", "%3Cp%3Eno+body%3C%2Fp%3E"}};
  for (const auto& [page, filed] : pages) {
    machine.http.Route("page.htm", page);
    Pass();
    EXPECT_THAT(Posts().back(), EndsWith(std::string("&filestr=") + filed));
    EXPECT_THAT(machine.http.Bodies("p_passWebEngine.asp").back(),
                AllOf(HasSubstr("&checksum=" + app.gEssayPageChecksum + "&p1=beta&p2=0&p3=503181"),
                      EndsWith("&cidx=0&s=It's%20he%20go.")));
  }
  EXPECT_THAT(machine.http.Bodies("p_passWebEngine.asp"), SizeIs(3));
  EXPECT_THAT(Texts("select distinct essayId || essaySId from errsentence"), ElementsAre("E1S1"));
}

TEST_F(EnginePassTest, GivesUpOnASilentEngineAfterHalfAMinute) {
  replies[app.gEssayCurSentence] = "ERR_ENGINE";
  const auto start = machine.loop.Elapsed();
  ExpectMessage(Message::kEngineTimeout);
  Pass();
  const auto seconds = (machine.loop.Elapsed() - start).count() / 1000.0;
  EXPECT_THAT(seconds, AllOf(Ge(30), Le(31)));
  EXPECT_THAT(Asked().size(), AllOf(Ge(14U), Le(22U))) << "with pauses between";
  ExpectStop();
}

TEST_F(EnginePassTest, AsksAgainAfterABrokenTransfer) {
  machine.http.Queue("p_passWebEngine.asp",
                     [](const base::HttpRequest&) -> base::HttpResponse { throw RunTimeError("broken"); });
  Pass();
  EXPECT_EQ(app.gVerdict, "PASS");
}

TEST_F(EnginePassTest, StopsAfterTheReplyThatIsWaitedForWithoutARecord) {
  machine.http.Route("p_passWebEngine_conn.asp", [this](const base::HttpRequest& request) {
    Window().picButtons(0).Visible = true;
    Window().mAnalysing = true;
    machine.loop.Post([this] { Window().picButtons_Click(0); });
    return base::HttpResponse{200, "", "ONLINE", request.url};
  });
  Pass();
  ExpectStop();
  EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(EnginePassTest, BreakingOffEndsTheWaitAndTheWalk) {
  for (const char* const page : {"p_passWebEngine_conn.asp", "p_passWebEngine.asp"}) {
    machine.http.breaksOff = [page](const base::HttpRequest& request) { return request.url.ends_with(page); };
    Window().mAnalysing = true;
    Window().mStopRequested = false;
    const auto start = machine.loop.Elapsed();
    Pass();
    ExpectStop();
    EXPECT_TRUE(Window().mStopRequested);
    EXPECT_LE((machine.loop.Elapsed() - start).count(), 300) << page;
  }
}

// The archive may be slow, or not there: the page comes from the engine itself.
TEST_F(EnginePassTest, NobodyWaitsForTheArchive) {
  replies[app.gEssayCurSentence] = "OK_1#AG01#page.htm#x";
  machine.http.Route("page.htm", "<p>finding</p>");
  machine.http.RouteToNowhere("p_all_engine_htm_rec.asp");
  Pass();
  EXPECT_EQ(app.gVerdict, "ERRS");
  ASSERT_TRUE(room.showFreshPage);
  room.showFreshPage();
  EXPECT_EQ(composition.frmBrowser->webOther.LocationURL(), app.gWebEngineRoot + "page.htm");
}

TEST_F(EnginePassTest, RecordsWhatTheLocalEngineSays) {
  InstallEngine({{"findMistake", "1"}, {"errcode", "AG01"}, {"sentence", "It's *he go* ."}}, "..<p>a</p>");
  Pass();
  EXPECT_EQ(sentenceInFile, "It's he go.");
  EXPECT_EQ(app.gVerdict, "ERRS");
  EXPECT_THAT(ErrRows(), ElementsAre("It’s *he go* .|AG01|1"));
  EXPECT_THAT(Posts(), ElementsAre(HasSubstr("&filestr=%3Cp%3Ea%3C%2Fp%3E")));
  EXPECT_FALSE(machine.files.FileExists(PagePath()));

  InstallEngine({{"findMistake", "0"}, {"htm4chk", "nil"}});
  Pass();
  EXPECT_EQ(app.gVerdict, "PASS");
  EXPECT_THAT(OkRows(), ElementsAre("It’s he go.|N"));
  EXPECT_THAT(Posts(), SizeIs(1));
  EXPECT_THAT(machine.processes.started.back().arguments, ElementsAre(HasSubstr("beta,")));
}

TEST_F(EnginePassTest, GivesUpOnALocalEngineThatLeavesNoPage) {
  InstallEngine({{"findMistake", "0"}, {"htm4chk", "/nowhere/page.htm"}});
  ExpectMessage(Message::kEngineTimeout);
  Pass();
  ExpectStop();
}

}  // namespace

}  // namespace marovane
