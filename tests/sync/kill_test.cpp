// Client and server killed at every statement.
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>

#include "tests/sync/computer.h"

namespace marovane {

namespace {

int statementsLeft = 0;

int CountStatement(unsigned /*event*/, void* /*context*/, void* /*statement*/, void* /*text*/) {
  if (--statementsLeft == 0) kill(getpid(), SIGKILL);
  return 0;
}

int Watch(sqlite3* connection, char** /*error*/, const void* /*api*/) {
  return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, CountStatement, nullptr);
}

/// Does the work in a process of its own, which is killed (SIGKILL) when its Nth SQL statement begins,
/// counted from 1 over all databases that the work opens. True when it was, false when it did not get there.
/// The work must not use databases that are open already.
bool IsKilledAtStatement(int n, const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    statementsLeft = n;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
    try {
      work();
    } catch (...) {
      _exit(2);  // no other test may run in this process
    }
    _exit(0);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  if (WIFSIGNALED(status)) return WTERMSIG(status) == SIGKILL;
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  return false;
}

/// Answers as the server did when it was asked the same, without a server.
class Recording {
 public:
  base::HttpResponse Answer(SyncServer& server, const base::HttpRequest& request) {
    auto reply = replies_[request.url + request.body] = server.Answer(request);
    if (reply.body.starts_with("DIFFERENT")) different_ = reply;
    return reply;
  }
  base::HttpResponse Replay(const base::HttpRequest& request) const {
    const auto known = replies_.find(request.url + request.body);
    return known == replies_.end() ? different_ : known->second;
  }

 private:
  std::map<std::string, base::HttpResponse> replies_;
  base::HttpResponse different_;  ///< what is said to records that nobody has asked about before
};

TEST(Kill, OfTheProgramAtAnyStatementOfAReloadLeavesTheOldRecordsOrTheNew) {
  SyncServer server;
  Recording recording;
  const auto live = [&](const base::HttpRequest& request) { return recording.Answer(server, request); };
  Computer source(live);
  // A row that another computer has deleted.
  const OkSentence old{
      .sId = "9065779560000000000000001", .sentence = "Old.", .sDate = DayFromIso("2026-11-01")};
  source.Records().InsertOkSentence(old);
  source.Records().Db().Run("update oksentence set upload = 'D'");
  for (int i = 0; i < 5; ++i) source.AddOk("Right " + std::to_string(i));
  source.AddErr("*Wrong*", "AG01");
  source.AddEssay("One. Two.");
  source.Sync("UPLOAD");
  Computer witness(live);
  witness.Sync("NOMSG");  // puts the streams on record
  const auto whole = Contents(server);
  ASSERT_EQ(whole.size(), 7U);

  int kills = 0;
  for (bool isKilled = true; isKilled;) {
    Computer victim([&](const base::HttpRequest& request) { return recording.Replay(request); });
    victim.Records().InsertOkSentence(old);
    victim.Records().Db().Run("update oksentence set upload = 'Y'");
    const auto before = victim.Contents();
    victim.Die();
    isKilled = IsKilledAtStatement(kills + 1, [&] {
      victim.Start();
      victim.Sync("NOMSG");
    });
    const auto after = victim.Contents();
    EXPECT_TRUE(after == before || after == whole) << "statement " << kills + 1;
    if (isKilled) ++kills;
    victim.machine.http.Route("", live);
    victim.Start();
    victim.Sync("NOMSG");
    EXPECT_EQ(victim.Contents(), whole) << "the next one heals";
  }
  EXPECT_GT(kills, 30);
  fmt::print("the program was killed at {} statements\n", kills);
}

/// A post that deletes, adds and brings an older account in.
base::HttpRequest WholePost() {
  return PostOf(SyncServer::kAccount, SyncServer::kOldAccount,
                "&k1=N&err1=&s1=New.&d1=2026%2F11%2F5&es1=0&ess1=0&ht1=N"
                "&k2=D&err2=AG01&s2=First.&d2=2026%2F11%2F1&es2=0&ess2=0&ht2=N"
                "&k3=N&err3=essay&s3=N&d3=2026%2F11%2F5&es3=7&ess3=8&ht3=T%3C%40%3EText.%3C%40%3EText.");
}

void FillServer(SyncPages& server) {
  const std::string row = "&d1=2026%2F11%2F1&es1=0&ess1=0&ht1=N";
  for (const char* const account : {SyncServer::kAccount, SyncServer::kOldAccount}) {
    server.AddAccount(account, SyncServer::kOldPassword);
  }
  server.Answer(PostOf(SyncServer::kAccount, SyncServer::kAccount, "&k1=N&err1=AG01&s1=First." + row));
  server.Answer(PostOf(SyncServer::kOldAccount, SyncServer::kOldAccount, "&k1=N&err1=&s1=Old." + row));
}

std::string AllOf(const std::filesystem::path& database) {
  return fmt::format(
      "{}", fmt::join(ServerRows(database, fmt::format("select sentence from sentence where account = '{0}' "
                                                       "union all select new_essay from essay "
                                                       "where account = '{0}' order by 1",
                                                       SyncServer::kAccount)),
                      " "));
}

TEST(Kill, OfTheServerAtAnyStatementOfAPageLeavesAllOfAStepOrNothing) {
  const std::string whole = "New. Old. Text.";
  int kills = 0;
  for (bool isKilled = true; isKilled;) {
    const TempFolder folder;
    const auto database = folder / "server.db";
    FillServer(*std::make_unique<SyncPages>(database));
    ASSERT_EQ(AllOf(database), "First.");
    isKilled = IsKilledAtStatement(kills + 1, [&] { SyncPages(database).Answer(WholePost()); });
    if (isKilled) ++kills;
    EXPECT_THAT(AllOf(database), ::testing::AnyOf("First.", "First. Old.", whole)) << "statement " << kills;
    EXPECT_EQ(SyncPages(database).Answer(WholePost()).body, "OK_");
    EXPECT_EQ(AllOf(database), whole) << "the same post once more stores what is missing, and no more";
  }
  EXPECT_GT(kills, 15);
  fmt::print("the server was killed at {} statements\n", kills);
}

/// A learner with two computers and a server, of which a copy can be made.
struct World {
  World() {
    Open("server.db");
    for (Computer* const computer : {&home, &school}) computer->CloseMessages();
  }
  void Open(const std::string& name) {
    pages = std::make_unique<SyncPages>(folder / name);
    for (const char* const account : {SyncServer::kAccount, SyncServer::kOldAccount}) {
      pages->AddAccount(account, SyncServer::kOldPassword);
    }
  }
  base::HttpResponse Answer(const base::HttpRequest& request) { return pages->Answer(request); }
  base::HttpResponse AnswerHome(const base::HttpRequest& request) {
    auto reply = Answer(request);
    reply_.Step("reply to " + request.url);
    return reply;
  }
  /// What can kill the program at home: before a statement, a step with a file, a request, a reply.
  std::array<Fault*, 4> Faults() {
    auto& machine = home.machine;
    return {&machine.databases.fault, &machine.files.fault, &machine.http.fault, &reply_};
  }
  /// The server is another one from now on, with what the database of this name holds.
  void Restore(const std::string& name) {
    pages.reset();
    Open(name);
  }
  void Backup() { pages->Query("vacuum into '" + (folder / "backup.db").string() + "'"); }
  void SyncBoth() {
    for (int round = 0; round < 2; ++round) {
      for (Computer* const computer : {&home, &school}) EXPECT_TRUE(computer->Sync("NOMSG"));
    }
  }
  void WorkAtHome(const std::string& what) {
    home.AddOk(what);
    home.AddErr("*" + what + "*", "AG01");
    EssayRecords(home.Records()).FinishEssay(home.AddEssay(what), "Finished: " + what);
  }

  /// What is at home, without the ids, which are others in each world.
  std::vector<std::string> Texts() {
    return home.Query(
        "select sentence from oksentence union all select sentence from errsentence"
        " union all select newEssay || finalSet from essay order by 1");
  }

  TempFolder folder;
  std::unique_ptr<SyncPages> pages;
  Computer home{[this](const base::HttpRequest& request) { return AnswerHome(request); }};
  Computer school{[this](const base::HttpRequest& request) { return Answer(request); }};

 private:
  Fault reply_;
};

struct Journey {
  const char* name;
  std::function<void(World&)> prepare;
  const char* mode = "NOMSG";
  const char* oldAccount = "";
};

void PrintTo(const Journey& journey, std::ostream* out) { *out << journey.name; }

void FillOldAccount(SyncPages& pages) {
  pages.Answer(
      PostOf(SyncServer::kOldAccount, SyncServer::kOldAccount,
             "&k1=N&err1=&s1=Theirs.&d1=2026%2F11%2F1&es1=0&ess1=0&ht1=N"
             "&k2=N&err2=AG01&s2=*Theirs*.&d2=2026%2F11%2F1&es2=0&ess2=0&ht2=N"
             "&k3=N&err3=essay&s3=N&d3=2026%2F11%2F5&es3=7&ess3=8&ht3=T%3C%40%3EText.%3C%40%3EText."));
}

const std::array kJourneys{
    Journey{"upload",
            [](World& world) {
              world.WorkAtHome("Old.");
              world.SyncBoth();
              world.home.Records().Db().Run("update oksentence set upload = 'D'");
              world.WorkAtHome("New.");
            }},
    Journey{"reload",
            [](World& world) {
              world.WorkAtHome("Old.");
              world.SyncBoth();
              world.school.Records().Db().Run("update oksentence set upload = 'D'");
              world.school.AddOk("Theirs.");
              world.school.Sync("NOMSG");
            }},
    Journey{"merge",
            [](World& world) {
              world.WorkAtHome("Own.");
              world.home.AddOk("Deleted.");
              world.SyncBoth();
              world.home.Records().Db().Run("update oksentence set upload = 'D' where sentence = 'Deleted.'");
              world.WorkAtHome("New.");
              FillOldAccount(*world.pages);
            },
            "", SyncServer::kOldAccount},
    Journey{"move",
            [](World& world) {
              world.WorkAtHome("Old.");
              world.home.AddOk("Deleted.");
              world.SyncBoth();
              world.home.Records().Db().Run("update oksentence set upload = 'D' where sentence = 'Deleted.'");
              world.SyncBoth();
              world.home.AddOk("Refused.");
              world.home.Records().Db().Run("update oksentence set upload = 'R' where sentence = 'Refused.'");
              world.WorkAtHome("New.");
              world.Restore("another.db");
              world.school.AddOk("Theirs.");  // which is there first
              world.school.Sync("NOMSG");
            }},
    Journey{"set_up_anew",
            [](World& world) {
              world.WorkAtHome("Old.");
              world.SyncBoth();
              world.Restore("another.db");
            }},
    Journey{"restore",
            [](World& world) {
              world.home.AddOk("Deleted.");
              world.SyncBoth();
              world.Backup();
              world.home.Records().Db().Run("update oksentence set upload = 'D'");
              world.WorkAtHome("Since then.");
              world.SyncBoth();
              world.Restore("backup.db");
              world.school.AddOk("Later.");
              world.school.Sync("NOMSG");
              world.home.AddOk("New.");
            }},
    Journey{"restore_and_merge",
            [](World& world) {
              world.WorkAtHome("Old.");
              FillOldAccount(*world.pages);
              world.SyncBoth();
              world.Backup();
              world.home.AddOk("Since then.");
              world.home.Sync("", SyncServer::kOldAccount);
              world.SyncBoth();
              world.Restore("backup.db");
            },
            "", SyncServer::kOldAccount}};

class KillAnywhere : public ::testing::TestWithParam<Journey> {};

/// Whether a program that dies before the statement leaves another state than one that dies after it.
bool Writes(const std::string& statement) {
  return !statement.starts_with("select") && !statement.starts_with("pragma");
}

// The program dies before each statement that writes, each step with a file, each request and each reply, and
// is started again. What its start synchronises is whole on both sides, and so is the journey when it is made
// once more.
TEST_P(KillAnywhere, LosesNothingAndDoublesNothing) {
  const Journey& journey = GetParam();
  const auto expectInStep = [](World& world) {
    EXPECT_EQ(world.home.Contents(), ServerContents(world.pages->Database(), SyncServer::kAccount));
  };
  const auto finish = [&](World& world) {
    EXPECT_TRUE(world.home.Sync(journey.mode, journey.oldAccount));
    EXPECT_TRUE(world.school.Sync("NOMSG"));
    EXPECT_TRUE(world.home.Sync("NOMSG"));
    expectInStep(world);
    EXPECT_EQ(world.school.Contents(), world.home.Contents());
  };
  World whole;
  journey.prepare(whole);
  for (Fault* const fault : whole.Faults()) fault->Reset();
  whole.home.machine.databases.statements.clear();
  ASSERT_TRUE(whole.home.Sync(journey.mode, journey.oldAccount));
  const auto statements = whole.home.machine.databases.statements;
  std::vector<int> steps;
  for (Fault* const fault : whole.Faults()) steps.push_back(fault->Steps());
  finish(whole);
  const auto wanted = whole.Texts();
  ASSERT_FALSE(wanted.empty());
  std::vector<int> kills(steps.size());
  for (std::size_t kind = 0; kind < steps.size(); ++kind) {
    for (int step = 1; step <= steps[kind] && !HasFailure(); ++step) {
      if (kind == 0 && !Writes(statements.at(static_cast<std::size_t>(step) - 1))) continue;
      SCOPED_TRACE(fmt::format("kind {}, step {}", kind, step));
      World world;
      journey.prepare(world);
      Fault& fault = *world.Faults().at(kind);
      fault.Reset();
      fault.KillAt(step);
      EXPECT_FALSE(world.home.Sync(journey.mode, journey.oldAccount));
      fault.Reset();
      world.home.Die();
      world.home.Start();
      if (*journey.oldAccount != '\0') {
        EXPECT_TRUE(world.home.Sync("NOMSG"));  // half a merge is none, or whole
        expectInStep(world);
      }
      finish(world);
      EXPECT_EQ(world.Texts(), wanted);
      ++kills[kind];
    }
  }
  fmt::print("{}: killed at {} statements, files, requests, replies\n", journey.name, fmt::join(kills, ", "));
  EXPECT_GT(kills[0], 15);
  EXPECT_GT(kills[1], 5);
  EXPECT_GT(kills[2], 5);
  EXPECT_EQ(kills[3], kills[2]);
}

INSTANTIATE_TEST_SUITE_P(Journeys, KillAnywhere, ::testing::ValuesIn(kJourneys),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace

}  // namespace marovane
