// Upload and synchronisation over the server's own pages.
#include "base/digest.h"
#include "platform/timer.h"
#include "records/age_cleaning.h"
#include "sync/feedback_post.h"
#include "tests/support/expect_message.h"
#include "tests/sync/computer.h"

namespace marovane {

namespace {

using namespace ::testing;

class SyncTest : public ::testing::Test {
 protected:
  void TearDown() override {
    for (Computer* const each : {&home, &school}) {
      EXPECT_EQ(each->machine.user.Expected(), 0U) << "messages that never came";
    }
  }
  FakeHttp::Answer Forward() {
    return [this](const base::HttpRequest& request) { return server.Answer(request); };
  }
  static std::size_t Requests(Computer& computer, const std::string& page) {
    return computer.machine.http.Bodies(page).size();
  }
  /// Requests of a synchronisation.
  std::size_t RequestsOfSync(Computer& computer) {
    computer.machine.http.requests.clear();
    EXPECT_TRUE(computer.Sync("NOMSG"));
    return computer.machine.http.requests.size();
  }
  /// Sentences on the server.
  std::string Stored() const { return server.Query("select count(*) from sentence")[0]; }

  SyncServer server;
  Computer home{Forward()}, school{Forward()};
};

TEST_F(SyncTest, BringsTheRecordsOfOneComputerToTheOther) {
  home.AddOk("He goes to school.");
  home.AddOk("It's \"5 < 6\" & 7 > 2 + 1% #1 | <@> 中文, 😀 é ‧·");
  home.AddErr("He *go* to school.", "AG01");
  const std::string essay = home.AddEssay("One.\r\n\r\nTwo # 3 || <@> four.\n");
  home.AddOk("One.", essay);
  ASSERT_TRUE(home.Sync("UPLOAD"));
  ASSERT_TRUE(school.Sync("NOMSG"));

  EXPECT_EQ(school.Contents(), home.Contents());
  EXPECT_EQ(Contents(server), home.Contents());
  EXPECT_EQ(school.Contents().size(), 5U);
  EXPECT_THAT(home.Query("select distinct upload from oksentence"), ElementsAre("Y"));
  EXPECT_THAT(school.Query("select distinct upload from oksentence"), ElementsAre("Y"));
  EXPECT_EQ(school.running->frmMain.Left(), 4711);
  EXPECT_TRUE(school.running->frmMain.Enabled());
  EXPECT_TRUE(school.App().gUploadFinished);
  EXPECT_FALSE(school.running->frmUpload.IsLoaded());

  EXPECT_EQ(RequestsOfSync(school), 1U) << "the quick path asks for the checksum alone";
}

TEST_F(SyncTest, LeavesTheMainWindowWhereAnotherWindowPutsIt) {
  auto& left = home.running->frmMain.Left;
  left = -20000;  // the essay window is open
  home.machine.http.Queue(kCompare, [&](const base::HttpRequest& request) {
    left = 3000;  // and closes
    return server.Answer(request);
  });
  ASSERT_TRUE(home.Sync("NOMSG"));
  EXPECT_EQ(left, 3000);
}

TEST_F(SyncTest, PostsTheFieldsOfTheFormInTheirOrder) {
  home.AddErr(" He *go*. ", "AG01");
  const std::string id = home.AddEssay("A & b.\r\nC.");
  home.AddOk("It's 1+1.", id);
  const std::string right = home.Query("select sId from oksentence")[0];
  const std::string faulty = home.Query("select id from errsentence")[0];
  home.Sync("UPLOAD", SyncServer::kOldAccount);
  const auto posts = home.machine.http.Bodies(kUpload);
  const std::string head = "key=zorbelquinter&pno=1234567890&frompno=old.account&grade=u2";
  EXPECT_THAT(
      posts,
      ElementsAre(head + "&k1=N&err1=AG01&s1=He+*go*.&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N&id1=" + faulty,
                  head + "&k1=N&err1=&s1=It%E2%80%99s+1%2B1.&d1=2026%2F11%2F5&es1=" + id +
                      "&ess1=0&ht1=N&id1=" + right,
                  head + "&k1=N&err1=essay&s1=A&d1=2026%2F11%2F5&es1=" + id + "&ess1=" + id +
                      "1&ht1=%E6%88%91%E7%9A%84%E7%9F%AD%E6%96%87%3C%40%3EA+%26+b.%0D%0AC.%3C%40%3E"
                      "A+%26+b.%0D%0AC.&id1=" +
                      id));
}

TEST_F(SyncTest, DeletesOneOfTwoEqualSentences) {
  home.AddOk("Twice.");
  home.Sync("UPLOAD");
  home.AddOk("Twice.");
  home.Records().Db().Run("update oksentence set upload = 'D' where upload = 'N'");
  home.Sync("UPLOAD");
  EXPECT_EQ(Stored(), "1") << "the deleted one was never there";
  home.Records().Db().Run("update oksentence set upload = 'D'");
  home.Sync("NOMSG");
  EXPECT_EQ(Stored(), "0");
  EXPECT_TRUE(home.Contents().empty());
}

TEST_F(SyncTest, PagesThroughLongStreamsAndKeepsTheOrder) {
  home.Records().Db().Run("begin");
  for (int i = 0; i < 2050; ++i) home.AddOk("Number " + std::to_string(i) + ".");
  home.Records().Db().Run("commit");
  home.Sync("UPLOAD");
  school.Sync("NOMSG");
  EXPECT_EQ(school.Contents(), home.Contents());
  const std::string sentences = "select sentence from oksentence order by sId";
  EXPECT_EQ(school.Query(sentences), home.Query(sentences));
  EXPECT_EQ(Requests(school, kStream), 6U) << "3 pages and three streams";
}

TEST_F(SyncTest, KeepsWhatDidNotArriveAndSendsItOnce) {
  home.AddOk("Kept.");
  home.machine.http.Queue(kUpload, [this](const base::HttpRequest& request) -> base::HttpResponse {
    server.Answer(request);
    throw RunTimeError("the reply got lost");
  });
  home.Sync("NOMSG");
  EXPECT_THAT(home.Query("select upload from oksentence"), ElementsAre("Y"));
  EXPECT_EQ(home.Contents().size(), 1U) << "no reload while something is on its way";
  home.Sync("NOMSG");
  EXPECT_EQ(Requests(home, kUpload), 2U);
  EXPECT_EQ(Stored(), "1");
  home.Sync("NOMSG");
  EXPECT_EQ(Requests(home, kUpload), 2U) << "the outbox is empty";
}

TEST_F(SyncTest, FeedbackThatWaitsGoesAlsoWhenNothingElseDoes) {
  const std::string body =
      "key=zorbelquinter&pno=1234567890&errcode=AG01&sentence=He+go.&remarks=%A4%A4&email=";
  home.machine.http.RouteToNowhere("p_feedback.asp");
  ASSERT_EQ(SendFeedback(home.running->program, body), FeedbackFate::kKept);
  home.Sync("NOMSG");
  EXPECT_THAT(server.Query("select remarks from feedback"), IsEmpty());
  for (const char* const page : {"p_getconn.asp", "p_feedback.asp"}) {
    home.machine.http.Route(page, "<html>Welcome to our network! Log in.</html>");
  }
  home.Sync("NOMSG");
  for (const char* const page : {"p_getconn.asp", "p_feedback.asp"}) home.machine.http.Route(page, Forward());
  for (const char* const mode : {"DOWNLOAD", "NOMSG", "NOMSG"}) home.Sync(mode);
  EXPECT_THAT(server.Query("select remarks from feedback"), ElementsAre("中"));
}

TEST_F(SyncTest, AsksAgainForAStreamThatBreaksOff) {
  home.AddOk("Here.");
  home.Sync("UPLOAD");
  for (const char* const reply : {"", "<@>FINISH", "#Here.#2026/11/5#0#0#N<@>"}) {
    school.machine.http.Queue(kStream, reply);
  }
  school.Sync("NOMSG");
  EXPECT_EQ(school.Contents(), home.Contents()) << "no row twice";
  EXPECT_EQ(Requests(school, kStream), 7U);
}

/// A school that wants the tokens of logins.
class LoginTest : public SyncTest {
 protected:
  static constexpr const char* kLogin = "p_getauthwithpw.asp";

  LoginTest() {
    server.RequireTokens();
    for (Computer* const each : {&home, &school}) each->App().gAccountPassword = SyncServer::kOldPassword;
    home.AddOk("Mine.");
  }
  std::vector<std::string> Waiting() {
    return home.machine.realFiles.List(OutboxFolder(home.running->program));
  }
  void Expect(const Message& message) { ExpectMessage(home.machine.user, message); }
  void ProveOldAccount() {
    EXPECT_THAT(
        CheckAccountPassword(home.running->program, SyncServer::kOldAccount, SyncServer::kOldPassword),
        StartsWith("OK"));
  }
};

TEST_F(LoginTest, ARefusedLoginIsToldOnceAndEverythingWaits) {
  home.App().gAccountPassword = "wrong";
  const auto before = home.Contents();
  Expect(Message::kWrongPassword);
  for (const char* const mode : {"UPLOAD", "NOMSG", "DOWNLOAD"}) ASSERT_TRUE(home.Sync(mode));
  EXPECT_EQ(home.Contents(), before);
  EXPECT_THAT(home.Query("select upload from oksentence"), ElementsAre("N"));
  EXPECT_EQ(Requests(home, kLogin), 1U) << "the server counts the tries";
  home.App().gAccountPassword = SyncServer::kOldPassword;
  ASSERT_TRUE(home.Sync("NOMSG"));
  EXPECT_EQ(Stored(), "1");
}

TEST_F(LoginTest, TokensRevokedBeforeAnyPageLoseNothing) {
  for (const char* const page : {kCompare, kUpload, kStream}) {
    SCOPED_TRACE(page);
    home.machine.http.Queue(page, [this](const base::HttpRequest& request) {
      server.RevokeTokens();
      return server.Answer(request);
    });
    home.AddErr(std::string("*At* ") + page, "AG01");
    school.AddOk(std::string("Theirs at ") + page);
    ASSERT_TRUE(school.Sync("UPLOAD"));
    ASSERT_TRUE(home.Sync("NOMSG"));
    EXPECT_EQ(Contents(server), home.Contents());
  }
  EXPECT_EQ(home.Contents().size(), 7U);
}

TEST_F(LoginTest, AStreamThatWantsALoginEndsTheReloadAtOnce) {
  ASSERT_TRUE(home.Sync("NOMSG"));
  school.AddOk("Theirs.");
  ASSERT_TRUE(school.Sync("UPLOAD"));
  const auto before = home.Contents();
  home.machine.http.requests.clear();
  home.machine.http.Queue(kStream, Forward());
  home.machine.http.Route(kStream, "ERR_LOGIN");
  const auto start = home.machine.loop.Elapsed();
  ASSERT_TRUE(home.Sync("NOMSG"));
  EXPECT_EQ(Requests(home, kStream), 3U) << "one page, and a stream that was asked for twice";
  EXPECT_LT(home.machine.loop.Elapsed() - start, std::chrono::seconds{10});
  EXPECT_EQ(home.Contents(), before);
}

TEST_F(LoginTest, AnUploadThatWantsALoginWaits) {
  home.machine.http.Route(kUpload, "ERR_LOGIN");
  ASSERT_TRUE(home.Sync("UPLOAD"));
  EXPECT_THAT(Waiting(), SizeIs(1));
  home.machine.http.Route(kUpload, Forward());
  ASSERT_TRUE(home.Sync("UPLOAD"));
  EXPECT_THAT(Waiting(), IsEmpty());
  EXPECT_EQ(Stored(), "1");
}

TEST_F(LoginTest, AMergeProvesBothAccounts) {
  ProveOldAccount();
  home.machine.http.requests.clear();
  Expect(Message::kMergeDone);
  ASSERT_TRUE(home.Sync("", SyncServer::kOldAccount));
  EXPECT_EQ(Stored(), "1");
  ASSERT_GT(Requests(home, kStream), 0U);
  for (const auto& request : home.machine.http.requests) {
    const base::HttpResponse sent{200, "", "", "", request.headers};
    const bool isMerge = request.body.find("frompno=old.account") != std::string::npos;
    EXPECT_EQ(sent.Header("Marovane-Old-Token").empty(), !isMerge) << request.url;
  }
}

TEST_F(LoginTest, AMergeWithoutTheOtherProofIsRefusedInWords) {
  Expect(Message::kPasswordNeeded);
  ASSERT_TRUE(home.Sync("", SyncServer::kOldAccount));
  EXPECT_EQ(Stored(), "1") << "the learner's own rows";
}

TEST_F(LoginTest, APostWhoseOlderAccountIsNoLongerProvedGoesWithoutTheMerge) {
  ProveOldAccount();
  home.machine.http.RouteToNowhere(kUpload);
  ASSERT_TRUE(home.Sync("UPLOAD", SyncServer::kOldAccount));
  EXPECT_THAT(Waiting(), SizeIs(1));
  server.RevokeTokens();
  home.machine.http.Route(kUpload, Forward());
  ASSERT_TRUE(home.Sync("UPLOAD"));
  EXPECT_THAT(Waiting(), IsEmpty());
  EXPECT_EQ(Stored(), "1");
  EXPECT_THAT(home.machine.http.Bodies(kUpload).back(), HasSubstr("&frompno=1234567890&"));
}

TEST_F(SyncTest, GivesUpAStreamThatStaysEmptyAfterAMinute) {
  home.machine.http.Route(kCompare, "");
  home.AddOk("Mine.");
  home.Sync("UPLOAD");
  const auto before = home.Contents();
  home.machine.http.Route(kStream, "");
  home.CloseMessages();
  const auto start = home.machine.loop.Elapsed();
  ASSERT_TRUE(home.Sync("NOMSG"));
  const auto seconds = std::chrono::duration<double>(home.machine.loop.Elapsed() - start).count();
  EXPECT_GE(seconds, 60);
  EXPECT_LE(seconds, 63);
  EXPECT_EQ(home.messages, 1);
  EXPECT_EQ(home.Contents(), before);
}

TEST_F(SyncTest, AComparisonThatGetsLostIsNoServerWithoutIds) {
  school.AddOk("Theirs.");
  school.Sync("UPLOAD");
  home.AddOk("Mine.");
  home.Sync("NOMSG");
  school.AddOk("Theirs too.");
  school.Sync("UPLOAD");
  for (const int lost : {1, 2}) {
    home.AddOk(fmt::format("Mine, {}.", lost));  // is sent between the comparisons
    home.machine.http.requests.clear();
    for (int comparison = 1; comparison <= 2; ++comparison) {
      home.machine.http.Queue(kCompare,
                              [&, comparison](const base::HttpRequest& request) -> base::HttpResponse {
                                if (comparison >= lost) throw RunTimeError("the reply got lost");
                                return server.Answer(request);
                              });
    }
    home.Sync("NOMSG");
    EXPECT_EQ(Requests(home, kStream), 0U) << lost;
  }
  for (int i = 0; i < 2; ++i) home.Sync("NOMSG");
  EXPECT_THAT(home.Contents(), SizeIs(5)) << "each once";
  EXPECT_EQ(home.Contents(), Contents(server));
}

TEST_F(SyncTest, EscapeEndsASynchronisationAndLeavesEverythingAsItWas) {
  school.AddOk("Theirs.");
  school.Sync("UPLOAD");
  home.AddOk("Mine.");
  home.CloseMessages();
  for (const char* const page : {kCompare, "p_getconn.asp", kUpload, kStream}) {
    SCOPED_TRACE(page);
    home.machine.http.breaksOff = nullptr;
    if (page == kStream) home.Sync("UPLOAD");
    const auto before = home.Contents();
    home.machine.http.breaksOff = [page](const base::HttpRequest& request) {
      return request.url.ends_with(page);
    };
    home.machine.http.requests.clear();
    ASSERT_TRUE(home.Sync(page == kStream ? "DOWNLOAD" : "NOMSG"));
    EXPECT_THAT(home.machine.http.requests.back().url, EndsWith(page)) << "nothing after it";
    EXPECT_EQ(home.messages, 0);
    EXPECT_EQ(home.Contents(), before);
    EXPECT_TRUE(home.running->frmMain.Enabled());
    EXPECT_EQ(home.running->frmMain.Left(), 4711);
  }
  home.machine.http.breaksOff = nullptr;
  home.Sync("NOMSG");
  school.Sync("NOMSG");
  EXPECT_THAT(school.Contents(), SizeIs(2)) << "each is there once";
  EXPECT_EQ(school.Contents(), home.Contents());
}

TEST_F(SyncTest, EscapeBetweenTwoPagesOfAStreamEndsTheReload) {
  school.AddOk("Theirs.");
  school.Sync("UPLOAD");
  home.CloseMessages();
  home.machine.http.Route(kStream, [&](const base::HttpRequest& request) {
    home.machine.loop.Post([&] { home.machine.loop.BreakOff(); });
    return server.Answer(request);
  });
  ASSERT_TRUE(home.Sync("NOMSG"));
  EXPECT_EQ(Requests(home, kStream), 1U);
  EXPECT_THAT(home.Contents(), IsEmpty());
  EXPECT_EQ(home.messages, 0);
}

TEST_F(SyncTest, EscapeEndsTheSendingOfWaitingFeedback) {
  home.machine.http.RouteToNowhere("p_feedback.asp");
  SendFeedback(home.running->program, "a");
  const auto isFeedback = [](const base::HttpRequest& request) {
    return request.url.ends_with("p_feedback.asp");
  };
  home.machine.http.breaksOff = isFeedback;
  home.machine.http.requests.clear();
  ASSERT_TRUE(home.Sync("NOMSG"));
  EXPECT_EQ(Requests(home, "p_feedback.asp"), 1U);
  EXPECT_EQ(Requests(home, kCompare), 0U) << "not the records";
  home.machine.http.breaksOff = nullptr;
}

TEST_F(SyncTest, AnEssayThatIsBegunMeanwhileKeepsTheMainWindowAway) {
  FakeMain& frmMain = home.running->frmMain;
  home.machine.http.Route(kCompare, [&](const base::HttpRequest& request) {
    frmMain.Left = -20000;
    home.App().gOpenEssay = true;
    return server.Answer(request);
  });
  ASSERT_TRUE(home.Sync("NOMSG"));
  EXPECT_EQ(frmMain.Left(), -20000);
}

TEST_F(SyncTest, LeavesTheRecordsAloneWhenTheServerTalksRubbish) {
  const struct {
    const char* what;
    int status;
    std::string body;
  } replies[] = {{"a page", 200, "<html>Log in to our network</html>"},
                 {"an error", 500, "FINISH"},
                 {"a redirection", 302, "FINISH"},
                 {"# in a sentence", 200, "#Room # 5.#2026/11/5#0#0#N<@>FINISH"},
                 {"a wrong date", 200, "#Here.#2026/13/5#0#0#N<@>FINISH"},
                 {"an empty date", 200, "#Here.##0#0#N<@>FINISH"},
                 {"half a character", 200, "#\xA4"},
                 {"a word of refusal", 200, "ERR_NOTFOUND"},
                 {"the same page for ever", 200, "#Here.#2026/11/5#0#0#N<@>LASTID:7"},
                 {"much of nothing", 200, std::string(5'000'000, 'x')}};
  home.machine.http.Route(kCompare, "<html>");
  home.AddOk("Mine.");
  home.Sync("UPLOAD");
  const auto before = home.Contents();
  home.CloseMessages();
  int messages = 0;
  for (const auto& [what, status, body] : replies) {
    SCOPED_TRACE(what);
    home.machine.http.Route(kStream, body, status);
    ASSERT_TRUE(home.Sync("NOMSG"));
    EXPECT_EQ(home.Contents(), before);
    EXPECT_EQ(home.messages, ++messages) << "the learner gets a message";
    EXPECT_TRUE(home.running->frmMain.Enabled());
    EXPECT_EQ(home.running->frmMain.Left(), 4711);
    EXPECT_TRUE(home.App().gUploadFinished);
  }
}

TEST_F(SyncTest, TracesTheStreamsBesideTheProgramOrElseInTheFolderOfTheUser) {
  home.AddOk("Traced.");
  home.Sync("UPLOAD");
  auto& machine = school.machine;
  const std::string rule = "'" + std::string(41, '=') + "\r\n";
  const auto part = [&](const std::string& name, const std::string& reply) {
    return rule + "' 呼叫下載 " + name + " 程序\r\n" + rule + reply + "\r\n" + rule;
  };
  const auto trace = [&](const std::string& id) {
    return part("oksentence", "#Traced.#2026/11/5#0#0#N" + id + "<@>FINISH") + part("errsentence", "FINISH") +
           part("essay", "FINISH");
  };
  school.Sync("NOMSG");
  EXPECT_EQ(machine.realFiles.Read(machine.home / "program/debug.log"),
            trace("#" + school.Query("select sId from oksentence")[0]));
  std::filesystem::remove_all(machine.home / "program");
  machine.realFiles.Write(machine.home / "program", "nobody can write into it", false);
  school.machine.http.Queue(kCompare, "DIFFERENT");
  school.Sync("NOMSG");
  EXPECT_EQ(machine.realFiles.Read(machine.home / "state/marovane/debug.log"), trace(""))
      << "a server that tells nothing of itself is not asked for ids";
}

TEST_F(SyncTest, ServerStoresNothingOfAPostWithAnIdThatIsNone) {
  const auto post =
      PostOf(SyncServer::kAccount, SyncServer::kAccount, "&k1=N&s1=Here.&ht1=N&k2=N&s2=There.&ht2=N&es2=1'");
  EXPECT_EQ(server.Answer(post).body, "ERR_BAD_TEXT");
  EXPECT_EQ(Stored(), "0");
}

// From a server that checks nothing, and from our own with rows that are older than its checks.
TEST_F(SyncTest, StoresIdsAndFlagsInTheirFormAndSqlAsText) {
  const std::string id = "1'); alert(1); ('";
  home.machine.http.Route(kCompare, "no");
  home.machine.http.Queue(kStream, "#x'); drop table essay; --#2026/11/5#" + id + "#<b>\"2#<img><@>FINISH");
  home.machine.http.Queue(kStream, "A1#*Wrong*.#2026/11/5##" + std::string(70, '3') + "#1<@>FINISH");
  home.machine.http.Queue(kStream, "2026/11/5||" + id + "||w0<b>||?||T||O||N<@>FINISH");
  home.Sync("NOMSG");
  EXPECT_THAT(home.Contents(), ElementsAre("2026-11-05|1alert1|w0b|N|T|O|N",
                                           "A1|*Wrong*.|2026-11-05||" + std::string(64, '3') + "|1|",
                                           "|x’); drop table essay; --|2026-11-05|1alert1|b2|N|"));
}

TEST_F(SyncTest, EndsWithTheProgramInTheMiddleOfAReloadAndChangesNothing) {
  home.machine.http.Route(kCompare, "no");
  home.AddOk("Mine.");
  home.Sync("UPLOAD");
  const auto before = home.Contents();
  home.machine.http.Route(kStream, "");
  Timer closing(home.machine.loop, 20'000);
  closing.onTick = [this] { home.machine.loop.End(); };
  closing.Enabled = true;
  EXPECT_THROW(home.Sync("NOMSG"), ProgramEnd);
  EXPECT_GT(Requests(home, kStream), 5U);
  home.Die();
  EXPECT_EQ(home.Contents(), before);
}

// What the age cleaning has taken from a computer is no difference, or each start would load it again.
TEST_F(SyncTest, RecordsThatWereCleanedAwayAreNotLoadedAgain) {
  home.AddErr("He *go*.", "AG01");
  home.AddEssay("Old.");
  home.Sync("UPLOAD");
  home.machine.loop.Advance(std::chrono::days{200});
  server.today = "2027/5/24";
  home.AddOk("New.");
  home.Sync("UPLOAD");
  RemoveRecordsBefore(home.running->program, home.Records(), DayFromIso("2026-11-25"));
  EXPECT_EQ(RequestsOfSync(home), 1U);
  EXPECT_EQ(home.Contents().size(), 1U);
  school.Sync("NOMSG");
  EXPECT_EQ(school.Contents().size(), 3U) << "the server keeps all";
  EXPECT_EQ(RequestsOfSync(school), 1U) << "so may a computer";
}

TEST_F(SyncTest, TheArchiveHasARowOnceHoweverOftenAReloadBringsItBack) {
  for (int i = 0; i < 2; ++i) home.AddOk("Twice.");
  home.AddErr("He *go*.", "AG01");
  home.AddEssay("Old.");
  home.Sync("UPLOAD");
  home.machine.loop.Advance(std::chrono::days{200});
  server.today = "2027/5/24";
  for (int end = 0; end < 3; ++end) {
    RemoveRecordsBefore(home.running->program, home.Records(), DayFromIso("2026-11-25"));
    ASSERT_THAT(home.Contents(), IsEmpty());
    // From a server that tells no ids, so that they have other ones each time.
    home.machine.http.Queue(kCompare, "DIFFERENT");
    home.Sync("NOMSG");
    ASSERT_THAT(home.Contents(), SizeIs(4));
  }
  for (const char* const sql : {"select count(*) from oksentence where sentence = 'Twice.'",
                                "select count(*) + 1 from errsentence", "select count(*) + 1 from essay"}) {
    EXPECT_THAT(Rows(home.machine.realDatabases, home.recordsPath.parent_path() / "archive.mdb", sql),
                ElementsAre("2"));
  }
}

// Not every program trims what it posts, and each start would load all records again.
TEST_F(SyncTest, BlanksAroundAFieldAreNoDifference) {
  const auto post = PostOf(SyncServer::kAccount, SyncServer::kAccount,
                           "&k1=N&err1=&s1=+He+goes.+&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N");
  ASSERT_EQ(server.Answer(post).body, "OK_");
  school.Sync("NOMSG");
  EXPECT_EQ(school.Contents(), Contents(server));
  EXPECT_EQ(RequestsOfSync(school), 1U) << "the comparison alone";
}

TEST_F(SyncTest, CompareUnderstandsBothSidesAlike) {
  home.AddOk("It's  a 國中 student.");
  home.AddErr("He *isn't* 學生.", "AG01");
  const std::string essay = home.AddEssay("Text.");
  SyncRecords records(home.Records());
  EXPECT_EQ(SyncChecksum(records), base::SlotMd5(essay + "Itsa國中student.He*isnt*學生."));
}

TEST_F(SyncTest, MergesAnOlderAccountOnce) {
  const auto old = PostOf(SyncServer::kOldAccount, SyncServer::kOldAccount,
                          "&k1=N&err1=&s1=Old.&d1=2026%2F10%2F1&es1=0&ess1=0&ht1=N");
  ASSERT_EQ(server.Answer(old).body, "OK_");
  home.AddOk("New.");
  ExpectMessage(home.machine.user, Message::kMergeDone, kOk, "沒有新的記錄");
  home.Sync("", "old-account");
  EXPECT_EQ(home.Contents().size(), 1U) << "an account that does not exist brings nothing, and loses nothing";
  ExpectMessage(home.machine.user, Message::kMergeDone, kOk, "新增 1 個句子、0 篇短文");
  home.Sync("", SyncServer::kOldAccount);
  EXPECT_TRUE(home.running->frmMain.Enabled());
  home.AddOk("Newer.");
  ExpectMessage(home.machine.user, Message::kMergeDone, kOk, "沒有新的記錄");
  home.Sync("", SyncServer::kOldAccount);
  EXPECT_EQ(home.Contents().size(), 3U);
  EXPECT_EQ(home.Contents(), Contents(server));
}

TEST_F(SyncTest, SaysThatNothingCouldBeMerged) {
  home.AddOk("Mine.");
  home.Sync("UPLOAD");
  home.machine.http.RouteToNowhere("p_getconn.asp");
  ExpectMessage(home.machine.user, Message::kNetworkDown);
  home.Sync("", SyncServer::kOldAccount);
  EXPECT_EQ(Requests(home, kStream), 0U);
}

}  // namespace

}  // namespace marovane
