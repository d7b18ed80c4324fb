#include "core/engine_client.h"

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

TEST_F(EngineClientTest, AsksAgainUntilItIsAnswered) {
  const struct {
    EngineTerms terms;
    std::chrono::milliseconds least, most;
  } cases[] = {{{}, 0s, 1s}, {{.pausesAfterReplies = true}, 3s, 4s}};
  for (const auto& [terms, least, most] : cases) {
    for (const char* other : {"", "ERR_BUSY", "ok_1"}) http.Queue(kPage, other);
    http.Route(kPage, "OK_1#OK_ #2");
    EXPECT_EQ(Ask(terms), "1#OK_ #2");
    EXPECT_THAT(http.Bodies(kPage), SizeIs(4));
    EXPECT_THAT(http.Bodies(kPage), Each(std::string("a question")));
    EXPECT_GE(Spent(), least);
    EXPECT_LE(Spent(), most);
  }
}

TEST_F(EngineClientTest, BrokenTransferIsAnErrorIfTheTermsSaySo) {
  http.RouteToNowhere(kPage);
  EXPECT_THROW(Ask({.reportsBrokenTransfer = true}), RunTimeError);
  EXPECT_EQ(Ask(), std::nullopt);
  http.RouteToNowhere(kProbe);
  EXPECT_EQ(Ask({.reportsBrokenTransfer = true}), std::nullopt) << "an engine that is not there is none";
}

// Also when transfers are so slow that a timer, which is stopped meanwhile, would tick but once in each.
TEST_F(EngineClientTest, LimitIsTimeOfTheSteadyClock) {
  const struct {
    const char* name;
    const char* probe;
    std::chrono::milliseconds cost, spent;
    std::size_t probes;
  } cases[] = {{"slow", "ONLINE", 12s, 48s, 2},
               {"offline", "ERR", 10ms, 30'010ms, 31},
               {"slow and offline", "ERR", 20s, 41s, 2}};
  http.Route(kPage, "ERR");
  for (const auto& [name, probe, cost, spent, probes] : cases) {
    SCOPED_TRACE(name);
    http.Route(kProbe, probe);
    http.cost = cost;
    EXPECT_EQ(Ask(), std::nullopt);
    EXPECT_EQ(Spent(), spent);
    EXPECT_THAT(http.Bodies(kProbe), SizeIs(probes));
  }
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

}  // namespace

}  // namespace marovane
