// Pupils who share a computer: everybody has records of his own.
#include <fmt/format.h>

#include <map>
#include <random>

#include "core/records_place.h"
#include "sync/shared_records.h"
#include "tests/sync/computer.h"

namespace marovane {

namespace {

using namespace ::testing;

/// One computer on which several pupils log in, one after the other.
class PupilsTest : public ::testing::Test {
 protected:
  PupilsTest() {
    for (const std::string& account : kPupils) server_.AddAccount(account, SyncServer::kOldPassword);
    machine_.http.Route("", [this](const base::HttpRequest& request) {
      if (!isOnline_) throw RunTimeError("no connection");
      return server_.Answer(request);
    });
  }

  /// As a login does: the records of the account are opened, and made when there are none.
  std::unique_ptr<RunningProgram> LogIn(const std::string& account) {
    const std::filesystem::path path = Tmp() + "/marovane/learners/no-" + account + "/Marovane.mdb";
    if (!std::filesystem::exists(path)) CreateRecords(machine_.realDatabases, path);
    auto running = std::make_unique<RunningProgram>(machine_, path, account);
    running->program.app.gEdition = "XQD";
    running->program.app.gUploadAccountNo = account;
    return running;
  }
  std::string Tmp() const { return (machine_.home / "tmp").string(); }

  static inline const std::vector<std::string> kPupils{"b1", "b2", "b3"};
  SyncServer server_;
  TestMachine machine_;
  bool isOnline_ = true;
};

TEST_F(PupilsTest, EveryRowArrivesAtItsOwnAccountInAnyOrderOfLogins) {
  std::mt19937 random(16);
  std::map<std::string, std::multiset<std::string>> written;
  for (int lesson = 0; lesson < 200; ++lesson) {
    const std::string& account = kPupils[random() % kPupils.size()];
    const auto running = LogIn(account);
    isOnline_ = random() % 2 == 0;
    machine_.loop.Advance(std::chrono::minutes{50});
    for (unsigned i = random() % 3; i > 0; --i) {
      // Now and then what a classmate has written too.
      const std::string sentence = fmt::format("Sentence {}.", random() % 40);
      running->records.InsertOkSentence({.sId = MakeRecId(running->program),
                                         .sentence = sentence,
                                         .sDate = base::DayOf(machine_.loop.Now())});
      written[account].insert(sentence);
    }
    running->program.hall.frmUpload->SyncProgress(random() % 2 == 0 ? "UPLOAD" : "NOMSG");
  }
  isOnline_ = true;
  for (const std::string& account : kPupils) {
    const auto running = LogIn(account);
    for (int i = 0; i < 2; ++i) running->program.hall.frmUpload->SyncProgress("NOMSG");
    const auto own = running->records.Db().Column("select sentence from oksentence where upload = 'Y'");
    EXPECT_EQ(std::multiset<std::string>(own.begin(), own.end()), written[account]) << account;
    const auto stored = server_.Query("select sentence from sentence where account = '" + account + "'");
    EXPECT_EQ(std::multiset<std::string>(stored.begin(), stored.end()), written[account]) << account;
  }
  ASSERT_GT(written["b1"].size(), 20U);
}

/// What an older version has left: one database, and posts of two pupils.
class SharedRecordsTest : public PupilsTest {
 protected:
  void MakeShared() {
    const std::filesystem::path shared = Tmp() + "/marovane";
    std::filesystem::remove_all(shared);
    CreateRecords(machine_.realDatabases, shared / "Marovane.mdb", 1);
    for (const auto& [name, bytes] : Files()) {
      machine_.realFiles.CreateFolder((shared / name).parent_path(), true);
      machine_.realFiles.Write(shared / name, bytes, true);
    }
  }
  static std::map<std::string, std::string> Files() {
    return {{"outbox/1.post", "id1\n\n0\n\n\nkey=zorbelquinter&pno=b1&k1=N"},
            {"outbox/2.post", "id2\n\n0\n\n\nkey=zorbelquinter&pno=b2&k1=N"},
            {"outbox/3.post", "id3\n\n0\n\n\nkey=zorbelquinter&pno=&k1=N"},
            {"outbox/4.feedback", "key=zorbelquinter"},
            {"outbox/5.post", "damaged"},
            {"dbver.set", "20140302-2047\r\n"},
            {"archive.mdb", "old ones"},
            {"setup.set", "FontSize=BIG\r\n"}};
  }
  std::string Content(const std::string& name) {
    return base::ReadIfThere(machine_.realFiles, Tmp() + "/marovane/" + name);
  }
  void ExpectMoved() {
    auto files = Files();
    EXPECT_EQ(Content("setup.set"), files["setup.set"]) << "settings are everybody's";
    EXPECT_EQ(Content("learners/no-b1/outbox/1.post"), files["outbox/1.post"]);
    EXPECT_EQ(Content("learners/no-b2/outbox/2.post"), files["outbox/2.post"]);
    for (const char* const name :
         {"outbox/3.post", "outbox/4.feedback", "outbox/5.post", "dbver.set", "archive.mdb"}) {
      EXPECT_EQ(Content(std::string("learners/no-b1/") + name), files[name]) << name;
    }
    EXPECT_THAT(machine_.realFiles.List(Tmp() + "/marovane"), ElementsAre("setup.set"));
    EXPECT_THAT(machine_.realFiles.List(Tmp() + "/marovane/outbox"), IsEmpty());
    EXPECT_THAT(LogIn("b1")->records.Days(), IsEmpty()) << "it is a database";
  }
};

TEST_F(SharedRecordsTest, GoToTheirLearnersWhereverTheProgramDies) {
  Program program(machine_.machine, {});
  program.app.gTempDir = Tmp();
  for (int step = 1;; ++step) {
    SCOPED_TRACE(step);
    MakeShared();
    machine_.files.fault.Reset();
    machine_.files.fault.KillAt(step);
    const bool isKilled = DiesIn([&program] { MoveSharedRecords(program, "b1"); });
    machine_.files.fault.Reset();
    if (isKilled) MoveSharedRecords(program, "b1");
    ExpectMoved();
    if (isKilled) continue;
    EXPECT_GT(step, 10);
    break;
  }
}

TEST_F(SharedRecordsTest, AreSetAsideWhereTheLearnerHasRecordsAlready) {
  Program program(machine_.machine, {});
  program.app.gTempDir = Tmp();
  MakeShared();
  MoveSharedRecords(program, "b1");
  const std::string own = Content("learners/no-b1/Marovane.mdb");
  for (const int again : {1, 2}) {
    CreateRecords(machine_.realDatabases, Tmp() + "/marovane/Marovane.mdb");
    MoveSharedRecords(program, "b1");
    EXPECT_NE(Content(fmt::format("learners/no-b1/set-aside/of-all-pupils-{}/Marovane.mdb", again)), "");
  }
  EXPECT_EQ(Content("learners/no-b1/Marovane.mdb"), own);
}

}  // namespace

}  // namespace marovane
