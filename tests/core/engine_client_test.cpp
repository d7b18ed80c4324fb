#include "core/engine_client.h"

#include "core/process_control.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;
using namespace ::testing;

class EngineClientTest : public CoreTest {
 protected:
  static constexpr const char* kPage = "p_ask.asp";
  static constexpr const char* kProbe = "p_passWebEngine_conn.asp";
  static constexpr const char* kAllot = "p_all_webengine_get.asp";
  static constexpr const char* kName = "tolvex2.exe";

  EngineClientTest() {
    app.gWebEngineRoot = "http://engine/";
    http.Route(kProbe, "ONLINE");
    http.Route(kAllot, "OK_http://given/");
    Put(app.gEngineDir + kName, "");
  }
  std::optional<std::string> Ask(const EngineTerms& terms = {}) {
    http.requests.clear();
    start = machine.loop.Elapsed();
    return EngineClient(program, terms).AskWeb(kPage, "a question");
  }
  bool Run(const EngineTerms& terms, const std::function<bool()>& hasAnswered) {
    start = machine.loop.Elapsed();
    return EngineClient(program, terms).RunLocal(kName, "beta,010203", hasAnswered);
  }
  std::chrono::milliseconds Spent() const { return machine.loop.Elapsed() - start; }

  FakeHttp& http = machine.http;
  std::chrono::milliseconds start{0};
};

TEST_F(EngineClientTest, AsksAgainUntilItIsAnsweredEachTimeAfterALongerPause) {
  for (const char* other : {"", "ERR_BUSY", "ok_1"}) http.Queue(kPage, other);
  http.Queue(kPage, [](const base::HttpRequest&) -> base::HttpResponse { throw RunTimeError("broken"); });
  http.Route(kPage, "OK_1#OK_ #2");
  EXPECT_EQ(Ask(), "1#OK_ #2");
  EXPECT_THAT(http.Bodies(kPage), SizeIs(5));
  EXPECT_THAT(http.Bodies(kPage), Each(std::string("a question")));
  // 0.5 + 1 + 2 + 2 seconds, a fifth more or less
  EXPECT_GE(Spent(), 4400ms);
  EXPECT_LE(Spent(), 6700ms);
}

TEST_F(EngineClientTest, RefusalThatWillNotChangeEndsTheAsking) {
  const std::pair<const char*, std::size_t> cases[] = {
      {"ERR_WRONG_KEY", 1}, {"ERR_INVAILD_ACCOUNT", 1}, {"ERR_TRY_LATER", 10}, {"ERR_ENGINE", 10}};
  for (const auto& [word, least] : cases) {
    http.Route(kPage, word);
    EngineClient client(program);
    http.requests.clear();
    EXPECT_EQ(client.AskWeb(kPage, "a question"), std::nullopt);
    EXPECT_EQ(client.Refusal(), least == 1 ? word : "");
    EXPECT_GE(http.Bodies(kPage).size(), least) << word;
    EXPECT_LE(http.Bodies(kPage).size(), least == 1 ? 1U : 25U)
        << word << ": nobody is asked without a pause";
  }
}

// Whatever happens within: a silent server, a slow one, and one whose probe alone is slow.
TEST_F(EngineClientTest, LimitIsTimeOfTheSteadyClock) {
  const std::pair<const char*, std::chrono::milliseconds> cases[] = {
      {"ONLINE", 2s}, {"ONLINE", 12s}, {"ERR", 10ms}, {"ERR", 20s}, {"ERR", 100s}};
  http.Route(kPage, "ERR");
  for (const auto& [probe, cost] : cases) {
    SCOPED_TRACE(probe + std::to_string(cost.count()));
    http.Route(kProbe, probe);
    http.Route(kAllot, "OK_http://given/");
    http.cost = cost;
    EXPECT_EQ(Ask(), std::nullopt);
    EXPECT_GE(Spent(), 30s);
    EXPECT_LE(Spent(), 30s + 100ms);
  }
  http.Route(kProbe, "ERR");
  http.cost = 2500ms;
  start = machine.loop.Elapsed();
  EXPECT_THROW(Ask({.wantsMoreAttempts = [] { return false; }}), ProgramEnd);
  EXPECT_LE(Spent(), 33s) << "attempts at an allotment too";
}

TEST_F(EngineClientTest, LearnerBreaksOffAtOnce) {
  bool isStopped = false;
  const EngineTerms terms{.isStopped = [&] { return isStopped; }};
  http.Route(kProbe, "ERR");
  Timer learner(machine.loop, 2500);
  learner.onTick = [&] { isStopped = true; };
  learner.Enabled = true;
  EXPECT_EQ(Ask(terms), std::nullopt);
  EXPECT_EQ(Spent(), 2500ms);
  EXPECT_EQ(Ask(terms), std::nullopt);
  EXPECT_THAT(http.requests, IsEmpty());
  isStopped = false;
  machine.processes.InstallHanging(kName);
  EXPECT_FALSE(Run(terms, [] { return true; }));
  EXPECT_LE(Spent(), 2500ms);
  isStopped = false;
  learner.Enabled = false;
  http.Route(kProbe, "ONLINE");
  http.Route(kPage, [&](const base::HttpRequest& request) {
    isStopped = true;
    return base::HttpResponse{200, "", "OK_too late", request.url};
  });
  EXPECT_EQ(Ask(terms), std::nullopt);
}

// During a request, in the pause before the next one, and while a program runs.
TEST_F(EngineClientTest, EscapeEndsEveryWait) {
  bool wasAsked = false;
  const EngineTerms terms{.wantsMoreAttempts = [&] { return wasAsked = true; }};
  for (const char* const page : {kProbe, kAllot, kPage}) {
    http.Route(kProbe, page == kAllot ? "ERR" : "ONLINE");
    http.Route(kPage, "ERR");
    http.breaksOff = [&](const base::HttpRequest& request) { return request.url.ends_with(page); };
    EngineClient client(program, terms);
    start = machine.loop.Elapsed();
    EXPECT_EQ(client.AskWeb(kPage, "a question"), std::nullopt) << page;
    EXPECT_TRUE(client.IsBrokenOff());
    EXPECT_LE(Spent(), 300ms) << page;
    EXPECT_FALSE(wasAsked) << page;
  }
  http.breaksOff = nullptr;
  Timer learner(machine.loop, 700);
  learner.onTick = [this] { machine.loop.BreakOff(); };
  learner.Enabled = true;
  EXPECT_EQ(Ask(), std::nullopt);
  EXPECT_LE(Spent(), 700ms);
  machine.processes.InstallHanging(kName);
  EXPECT_FALSE(Run({}, [] { return true; }));
  EXPECT_LE(Spent(), 700ms);
  learner.Enabled = false;
  EXPECT_FALSE(EngineClient(program).IsBrokenOff()) << "it was another question";
}

TEST_F(EngineClientTest, AllotsAsLongAsTheLearnerWants) {
  http.Route(kPage, "OK_");
  int asked = 0;
  const EngineTerms terms{.wantsMoreAttempts = [&] { return ++asked < 3; }};
  EXPECT_EQ(Ask(terms), "");
  EXPECT_EQ(asked, 0);
  const auto url = [](const char* address) { return Field(&base::HttpRequest::url, address); };
  const auto probe = url("http://given/p_passWebEngine_conn.asp");
  EXPECT_THAT(http.requests, ElementsAre(url("http://publisher/p_all_webengine_get.asp"), probe, probe,
                                         url("http://given/p_ask.asp")));
  http.Route(kAllot, "ERR");
  EXPECT_THROW(Ask(terms), ProgramEnd);
  EXPECT_EQ(asked, 3);
  EXPECT_THAT(http.Bodies(kAllot), SizeIs(30));
  EXPECT_TRUE(machine.loop.HasEnded());
}

TEST_F(EngineClientTest, BrokenAllotmentIsNoReasonToAsk) {
  http.RouteToNowhere(kAllot);
  EXPECT_FALSE(EngineClient(program, {.wantsMoreAttempts = [] { return false; }}).IsOnline());
  EXPECT_THAT(http.requests, SizeIs(1));
}

TEST_F(EngineClientTest, ShowsTheAddressBeforeEachRequestToWhomItIsOfUse) {
  std::vector<std::string> shown;
  const EngineTerms terms{.showAddress = [&] { shown.push_back(app.gProgressDetail); }};
  http.Route(kPage, "OK_");
  Ask(terms);
  EXPECT_THAT(shown, IsEmpty());
  app.gDetailMessage = true;
  http.Queue(kPage, "ERR");
  Ask(terms);
  EXPECT_THAT(shown, ElementsAre("http://engine/", "http://engine/"));
}

TEST_F(EngineClientTest, RunsUntilTheProgramHasEndedAndAnswered) {
  int asked = 0;
  machine.processes.Install(kName, 700ms);
  EXPECT_TRUE(Run({}, [&] { return ++asked == 1; })) << "only one that has ended is asked";
  EXPECT_EQ(Spent(), 700ms);
  ASSERT_THAT(machine.processes.started, SizeIs(1));
  EXPECT_THAT(machine.processes.started[0].arguments, ElementsAre("beta,010203"));
  EXPECT_EQ(machine.processes.started[0].workingFolder, app.gEngineDir);
  EXPECT_TRUE(Run({}, [&] { return Spent() >= 5500ms; }));
  EXPECT_LE(Spent(), 6500ms) << "what happens without waking the loop is seen all the same";
  EXPECT_FALSE(Run({.limit = 5s}, [] { return false; }));
  EXPECT_EQ(Spent(), 5s);
  machine.processes.InstallHanging(kName);
  EXPECT_FALSE(Run({}, [] { return true; }));
  EXPECT_EQ(Spent(), 30s);
  std::filesystem::remove(app.gEngineDir + kName);
  EXPECT_THROW(Run({}, [] { return true; }), RunTimeError);
}

using ProcessControlTest = CoreTest;

TEST_F(ProcessControlTest, EndsWhatWorksInTheFolderByTheEndOfItsNameWhateverItsCase) {
  const std::string& own = app.gEngineDir;
  const int exact = machine.processes.Add("tolvex2.exe", own);
  const int longer = machine.processes.Add("MyTolvex2.EXE", own);
  machine.processes.Add("tolvex2.exe.old", own);
  machine.processes.Add("wexbin.exe", own);
  machine.processes.Add("tolvex2.exe", machine.home.Path());
  machine.processes.Add("tolvex2.exe", machine.home / "gone");
  EXPECT_FALSE(KillProcessByName(machine.processes, "updater.exe", own));
  EXPECT_THAT(machine.processes.terminated, IsEmpty());
  EXPECT_TRUE(KillProcessByName(machine.processes, "Tolvex2.exe", own));
  EXPECT_THAT(machine.processes.terminated, ElementsAre(exact, longer));
  EXPECT_FALSE(KillProcessByName(machine.processes, "tolvex2.exe", own));
}

TEST_F(ProcessControlTest, HelperIsLookedForInItsFolderAndThenBesideTheProgram) {
  machine.processes.Install("tolvex2.exe", std::chrono::milliseconds{1});
  EXPECT_THROW(StartHelper(program, app.gEngineDir, "tolvex2.exe", {"beta,010203"}), RunTimeError);
  Put(machine.home / "helpers" / "tolvex2.exe", "");
  StartHelper(program, app.gEngineDir, "tolvex2.exe", {"beta,010203"});
  Put(app.gEngineDir + "tolvex2.exe", "");
  StartHelper(program, app.gEngineDir, "tolvex2.exe", {"beta,010203"});
  ASSERT_EQ(machine.processes.started.size(), 2U);
  EXPECT_EQ(machine.processes.started[0].program, machine.home / "helpers" / "tolvex2.exe");
  EXPECT_EQ(machine.processes.started[1].program, app.gEngineDir + "tolvex2.exe");
  for (const auto& start : machine.processes.started) {
    EXPECT_THAT(start.arguments, ElementsAre("beta,010203"));
    EXPECT_EQ(start.workingFolder, app.gEngineDir);
  }
}

}  // namespace

}  // namespace marovane
