// The records of an older version lie in a folder that the system empties. Whatever happens on their way to
// the data folder, none may be lost.
#include "core/records_move.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <array>
#include <map>

#include "base/file_lock.h"
#include "base/posix_files.h"
#include "base/sqlite.h"
#include "platform/run_time_error.h"
#include "tests/support/failing_databases.h"
#include "tests/support/failing_files.h"
#include "tests/support/temp_home.h"

namespace marovane {

namespace {

using namespace ::testing;
namespace fs = std::filesystem;

// What an older version leaves, without its databases.
const std::map<std::string, std::string> kFiles = {
    {"marovane/setup.set", "FontSize=BIG\r\n"},    {"marovane/token.set", "secret"},
    {"marovane/dbver.set", "20140302-2047\r\n"},   {"marovane/outbox/1.post", "a post"},
    {"marovane/outbox/refused/2.post", "another"}, {"marovane/drafts/no-1", "I like"},
    {"marovane/set-aside/of-1999", "old"},         {"marovane/empty", ""}};
const std::vector<std::string> kDatabases = {"marovane/Marovane.mdb", "marovane/learners/no-7/Marovane.mdb",
                                             "marovane-server/server.db"};

/// A learner's computer.
struct Computer {
  Computer() {
    environment.variables = {{"HOME", home.Path().string()},
                             {"XDG_RUNTIME_DIR", (home / "run").string()},
                             {"TMP", old.string()},
                             {"XDG_DATA_HOME", (home / "data").string()}};
    Put(old / "tolvex/registry.set", "sentence=");
  }
  void Put(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    WriteFile(path, bytes);
  }
  /// A database with this row, which is in its log.
  void PutDatabase(const fs::path& path, const std::string& row) {
    static std::map<std::string, std::array<std::string, 2>> made;
    if (!made.contains(row)) made[row] = MakeDatabase(row);
    Put(path, made[row][0]);
    Put(path.string() + "-wal", made[row][1]);
  }
  /// Its bytes and those of its log.
  std::array<std::string, 2> MakeDatabase(const std::string& row) {
    const TempFolder folder;
    const auto database = realDatabases.Create(folder / "db");
    database->Run("create table t (x text)");
    database->Run("pragma wal_checkpoint");
    database->Run("insert into t values (?)", {row});
    return {ReadFile(folder / "db"), ReadFile(folder / "db-wal")};
  }
  void PutRecords(const fs::path& root) {
    for (const auto& [name, bytes] : kFiles) Put(root / name, bytes);
    for (const auto& name : kDatabases) PutDatabase(root / name, "row of " + name);
  }
  std::vector<std::string> RowsOf(const fs::path& path) {
    if (!fs::exists(path)) return {"no database"};
    return realDatabases.Open(path, base::Databases::Mode::kReadWrite)->Column("select x from t");
  }
  void ExpectWholeRecords(const fs::path& root) {
    for (const auto& [name, bytes] : kFiles) {
      EXPECT_TRUE(fs::exists(root / name)) << root / name;
      EXPECT_EQ(ReadFile(root / name), bytes);
    }
    for (const auto& name : kDatabases) EXPECT_THAT(RowsOf(root / name), ElementsAre("row of " + name));
  }
  /// Nothing of the learner's is left in the old place, and no half of a move in the new one.
  void ExpectMoveIsOver() {
    EXPECT_THAT(realFiles.ListFolders(old), ElementsAre("tolvex")) << "only the engine's exchange stays";
    EXPECT_THAT(realFiles.ListFolders(data), Not(Contains(StartsWith("records-"))));
  }
  StartPlace Find() { return FindRecords(files, databases, environment, std::chrono::milliseconds{0}); }
  /// A start without any fault, after which everything is in its place.
  void ExpectNextStartFinishes() {
    files.fault.Reset();
    databases.fault.Reset();
    const StartPlace place = Find();
    EXPECT_EQ(place.root, data);
    EXPECT_EQ(place.notice, "");
    ExpectWholeRecords(data);
    ExpectMoveIsOver();
  }

  TempHome home;
  const fs::path old = home / "run/tmp";
  const fs::path data = home / "data/marovane";
  const fs::path taken = old / ("marovane-moving-" + std::to_string(geteuid()));
  const fs::path aside = data / "set-aside/from-temporary-folder";
  Environment environment;
  base::PosixFiles realFiles;
  base::SqliteDatabases realDatabases;
  FailingFiles files{realFiles};
  FailingDatabases databases{realDatabases};
};

unsigned ModeOf(const fs::path& path) {
  return static_cast<unsigned>(fs::status(path).permissions() & fs::perms::mask);
}

TEST(RecordsMove, TakesEverythingToTheDataFolder) {
  Computer computer;
  computer.PutRecords(computer.old);
  computer.ExpectNextStartFinishes();
  EXPECT_EQ(ModeOf(computer.data / "marovane/outbox/1.post"), 0600U);
  EXPECT_EQ(computer.Find().root, computer.data) << "and finds nothing more to do";
  computer.ExpectWholeRecords(computer.data);
}

/// A start that dies at some step, for each of them: of the files, and of the statements.
class EveryStep : public TestWithParam<bool> {
 protected:
  static Fault& FaultOf(Computer& computer) {
    return GetParam() ? computer.databases.fault : computer.files.fault;
  }
  static int LeastSteps() { return GetParam() ? 9 : 60; }
};

TEST_P(EveryStep, KilledThereTheNextStartFinishes) {
  for (int step = 1;; ++step) {
    SCOPED_TRACE(step);
    Computer computer;
    computer.PutRecords(computer.old);
    FaultOf(computer).KillAt(step);
    if (!DiesIn([&] { computer.Find(); })) {
      EXPECT_GT(step, LeastSteps());
      return;
    }
    FaultOf(computer).Reset();
    FaultOf(computer).KillAt(step);  // once more, unless it has less to do now
    DiesIn([&] { computer.Find(); });
    computer.ExpectNextStartFinishes();
  }
}

TEST_P(EveryStep, FailingThereTheRunHasItsRecordsOrDoesNotStart) {
  for (int step = 1;; ++step) {
    SCOPED_TRACE(step);
    Computer computer;
    computer.PutRecords(computer.old);
    FaultOf(computer).FailAt(step);
    try {
      const StartPlace place = computer.Find();
      computer.ExpectWholeRecords(place.root);
      EXPECT_EQ(place.notice.empty(), place.root == computer.data) << place.notice;
    } catch (const RunTimeError& error) {
      EXPECT_THAT(error.what(), HasSubstr("as the test wanted"));
    }
    if (FaultOf(computer).Steps() < step) {
      EXPECT_GT(step, LeastSteps());
      return;
    }
    computer.ExpectNextStartFinishes();
  }
}

TEST_P(EveryStep, KilledThereRecordsOfTheDataFolderStayAsTheyAre) {
  for (int step = 1;; ++step) {
    SCOPED_TRACE(step);
    Computer computer;
    computer.PutRecords(computer.old);
    computer.PutDatabase(computer.data / "marovane/Marovane.mdb", "new");
    FaultOf(computer).KillAt(step);
    const bool died = DiesIn([&] { computer.Find(); });
    FaultOf(computer).Reset();
    computer.Find();
    EXPECT_THAT(computer.RowsOf(computer.data / "marovane/Marovane.mdb"), ElementsAre("new"));
    computer.ExpectWholeRecords(computer.aside);
    EXPECT_THAT(computer.realFiles.ListFolders(computer.data / "set-aside"), SizeIs(1))
        << "no copy of a copy";
    computer.ExpectMoveIsOver();
    if (!died) return;
  }
}

INSTANTIATE_TEST_SUITE_P(RecordsMove, EveryStep, Bool(),
                         [](const auto& param) { return param.param ? "OfTheStatements" : "OfTheFiles"; });

TEST(RecordsMove, WhatIsCopiedSurvivesAFolderThatIsEmptiedMeanwhile) {
  int whole = 0;
  int halves = 0;
  for (int step = 1;; ++step) {
    SCOPED_TRACE(step);
    Computer computer;
    computer.PutRecords(computer.old);
    computer.files.fault.KillAt(step);
    if (!DiesIn([&] { computer.Find(); })) break;
    fs::remove_all(computer.old);  // the power has failed, and the computer has started again
    const bool isHalf = fs::exists(computer.data / "records-copied.part");
    const bool isWhole =
        fs::exists(computer.data / "records-copied") || fs::exists(computer.data / "records-placing");
    computer.files.fault.Reset();
    const StartPlace place = computer.Find();
    if (isWhole) computer.ExpectWholeRecords(computer.data);
    EXPECT_EQ(place.notice.find(computer.aside.string()) != std::string::npos, isHalf);
    EXPECT_EQ(fs::exists(computer.aside), isHalf);
    whole += static_cast<int>(isWhole);
    halves += static_cast<int>(isHalf);
  }
  EXPECT_GT(whole, 10);
  EXPECT_GT(halves, 10);
}

TEST(RecordsMove, FoundBesideOtherRecordsIsToldOnce) {
  Computer computer;
  computer.PutDatabase(computer.data / "marovane/Marovane.mdb", "new");
  for (const std::string ending : {"", "-2"}) {
    computer.PutRecords(computer.old);
    const StartPlace place = computer.Find();
    EXPECT_EQ(place.root, computer.data);
    EXPECT_THAT(place.notice, HasSubstr(computer.aside.string() + ending));
    computer.ExpectWholeRecords(computer.aside.string() + ending);
    EXPECT_EQ(computer.Find().notice, "");
  }
}

TEST(RecordsMove, SettingsWithoutRecordsMakeRoom) {
  Computer computer;
  computer.PutRecords(computer.old);
  computer.Put(computer.data / "marovane/setup.set", "FontSize=SMALL\r\n");
  const StartPlace place = computer.Find();
  computer.ExpectWholeRecords(computer.data);
  EXPECT_EQ(ReadFile(computer.data / "set-aside/marovane/setup.set"), "FontSize=SMALL\r\n");
  EXPECT_THAT(place.notice, HasSubstr((computer.data / "set-aside/marovane").string()));
}

TEST(RecordsMove, RecordsThatAreInUseStayUntilTheNextStart) {
  for (const auto& name : kDatabases) {
    SCOPED_TRACE(name);
    Computer computer;
    computer.PutRecords(computer.old);
    auto other = computer.realDatabases.Open(computer.old / name, base::Databases::Mode::kReadWrite);
    const StartPlace place = computer.Find();
    EXPECT_EQ(place.root, computer.old);
    EXPECT_THAT(place.notice, HasSubstr(computer.old.string()));
    other->Run("insert into t values ('later')");
    other->Run("delete from t where x = 'later'");
    other.reset();
    computer.ExpectWholeRecords(computer.old);
    computer.ExpectNextStartFinishes();
  }
  Computer computer;
  computer.PutRecords(computer.old);
  {
    const base::FileLock older(computer.old / "marovane/instance.lock");
    EXPECT_EQ(computer.Find().root, computer.old);
    computer.PutDatabase(computer.data / "marovane/Marovane.mdb", "new");
    EXPECT_EQ(computer.Find().root, computer.data) << "it has records of its own";
    computer.ExpectWholeRecords(computer.old);
  }
  computer.Find();
  computer.ExpectWholeRecords(computer.aside);
}

TEST(RecordsMove, OneStartMovesAtATime) {
  Computer computer;
  computer.PutRecords(computer.old);
  {
    const base::FileLock other(computer.data / "records-move.lock");
    EXPECT_THROW(computer.Find(), RunTimeError);
    computer.ExpectWholeRecords(computer.old);
  }
  computer.ExpectNextStartFinishes();
}

TEST(RecordsMove, OlderProgramThatStartsBetweenLosesNothingEither) {
  Computer computer;
  computer.PutRecords(computer.old);
  int step = 0;
  while (fs::exists(computer.old / "marovane")) {
    computer.files.fault.Reset();
    computer.files.fault.KillAt(++step);
    ASSERT_TRUE(DiesIn([&] { computer.Find(); }));
  }
  computer.PutDatabase(computer.old / "marovane/Marovane.mdb", "of the older program");
  computer.files.fault.Reset();
  computer.Find();
  computer.ExpectWholeRecords(computer.data);
  computer.Find();
  EXPECT_THAT(computer.RowsOf(computer.aside / "marovane/Marovane.mdb"), ElementsAre("of the older program"));
  computer.ExpectWholeRecords(computer.data);
  computer.ExpectMoveIsOver();
}

TEST(RecordsMove, DamagedDatabaseMovesAsItIs) {
  Computer computer;
  const std::string damaged(5000, 'x');
  computer.Put(computer.old / "marovane/Marovane.mdb", damaged);
  EXPECT_EQ(computer.Find().root, computer.data);
  EXPECT_EQ(ReadFile(computer.data / "marovane/Marovane.mdb"), damaged);
  computer.ExpectMoveIsOver();
}

TEST(RecordsMove, TakesOnlyWhatIsTheUsersOwn) {
  {
    Computer computer;
    computer.PutRecords(computer.old);
    computer.files.foreign = computer.old / "marovane";
    EXPECT_EQ(computer.Find().root, computer.data);
    computer.ExpectWholeRecords(computer.old);
    EXPECT_THAT(computer.realFiles.List(computer.data / "marovane"), IsEmpty()) << "of another user";
  }
  {
    Computer computer;
    computer.PutRecords(computer.home / "elsewhere");
    fs::create_directory_symlink(computer.home / "elsewhere/marovane", computer.old / "marovane");
    EXPECT_EQ(computer.Find().root, computer.data);
    computer.ExpectWholeRecords(computer.home / "elsewhere");
    EXPECT_THAT(computer.realFiles.List(computer.data / "marovane"), IsEmpty()) << "of a link";
  }
  {
    Computer computer;
    computer.PutRecords(computer.old);
    computer.Put(computer.home / "private", "mine");
    fs::create_symlink(computer.home / "private", computer.old / "marovane/drafts/no-2");
    computer.Find();
    computer.ExpectWholeRecords(computer.data);
    EXPECT_EQ(ReadFile(computer.home / "private"), "mine");
    EXPECT_FALSE(fs::exists(computer.data / "marovane/drafts/no-2"))
        << "where a link leads is not the learner's";
    EXPECT_EQ(computer.Find().notice, "") << "what is left there is no find";
  }
  for (const bool isLink : {false, true}) {
    Computer computer;
    computer.PutRecords(computer.old);
    fs::create_directory(computer.home / "trap");
    if (isLink) {
      fs::create_directory_symlink(computer.home / "trap", computer.taken);
    } else {
      computer.files.foreign = computer.taken;
    }
    EXPECT_EQ(computer.Find().root, computer.old) << "somebody has prepared the folder of the move";
    computer.ExpectWholeRecords(computer.old);
    EXPECT_TRUE(fs::is_empty(computer.home / "trap"));
  }
}

TEST(RecordsMove, FoldersAreForTheirOwnerAlone) {
  Computer computer;
  computer.Find();
  for (const char* const name : {"", "marovane"}) EXPECT_EQ(ModeOf(computer.data / name), 0700U) << name;
  const std::vector<std::string> folders = {"marovane", "marovane/learners", "marovane/outbox",
                                            "marovane-server", "tolvex"};
  const fs::path chosen = computer.home / "chosen";
  for (const fs::path& root : {computer.data, chosen}) {
    for (const auto& name : folders) fs::create_directories(root / name);
    for (const auto& name : folders) fs::permissions(root / name, fs::perms{0755});
    fs::permissions(root, fs::perms{0755});
    computer.Find();
    for (const auto& name : folders) EXPECT_EQ(ModeOf(root / name), 0700U) << root / name;
    computer.environment.variables["MAROVANE_HOME"] = chosen;
  }
  EXPECT_EQ(ModeOf(computer.data), 0700U);
  EXPECT_EQ(ModeOf(chosen), 0755U) << "the learner may keep other things there";
}

}  // namespace

}  // namespace marovane
