#include "records/salvage.h"

#include <gmock/gmock.h>

#include <set>

#include "core/program.h"
#include "core/settings.h"
#include "platform/run_time_error.h"
#include "tests/records/record_store.h"
#include "tests/support/realistic_records.h"
#include "tests/support/test_machine.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono;
using namespace ::testing;

constexpr const char* kRecords = "Marovane.mdb";

class SalvageTest : public ::testing::Test {
 protected:
  SalvageTest() {
    program.app.gTempDir = (machine.home / "tmp").string();
    program.app.gSetupFile = (Data() / "setup.set").string();
    program.app.gConnRecords = "Data Source=" + (Data() / kRecords).string() + ";";
    fs::create_directories(machine.home / "program/giz");
    machine.realFiles.Write(machine.home / "program/giz/mrvdata.giz", "package", false);
    machine.processes.Install("mrvdata.exe", milliseconds{5}, [this](const base::ProcessStart& start) {
      const fs::path folder = start.arguments[1];
      if (!fs::exists(folder / kRecords)) CreateRecords(machine.realDatabases, folder / kRecords);
    });
    CreateRecords(machine.realDatabases, Data() / kRecords);
    FillRealistically(*machine.realDatabases.Open(Data() / kRecords, base::Databases::Mode::kReadWrite),
                      {.sentences = 1500, .days = 100, .lastDay = year{2026} / 11 / 5});
    whole_ = machine.realFiles.Read(Data() / kRecords);
    rows_ = AllRows(Data() / kRecords);
  }
  fs::path Data() const { return machine.home / "tmp/marovane"; }

  std::multiset<std::string> AllRows(const fs::path& path) {
    std::multiset<std::string> rows;
    for (const char* const table : {"oksentence", "errsentence", "mistakes", "essay", "workRec"}) {
      for (const auto& row : Rows(machine.realDatabases, path, std::string("select * from ") + table)) {
        rows.insert(table + ("|" + row));
      }
    }
    return rows;
  }
  std::vector<std::string> SetAside() const { return machine.realFiles.List(Data() / "set-aside"); }
  std::size_t PageSize() const {
    return static_cast<unsigned char>(whole_[16]) * 256U + static_cast<unsigned char>(whole_[17]);
  }
  void Damage(const std::string& bytes) {
    fs::remove_all(Data());
    machine.realFiles.CreateFolder(Data(), true);
    machine.realFiles.Write(Data() / kRecords, bytes, true);
  }
  std::string WithRubbishAt(std::size_t at, std::size_t length) const {
    std::string bytes = whole_;
    return bytes.replace(at, length, length, '\xA5');
  }
  /// Damages the records and starts.
  /// @return what was carried over
  std::multiset<std::string> Mended(const std::string& bytes) {
    Damage(bytes);
    machine.windows.systemBoxes.clear();
    MendRecords(program);
    return AllRows(Data() / kRecords);
  }
  std::size_t Lost(const std::multiset<std::string>& carried) const { return rows_.size() - carried.size(); }
  void ExpectBox(const std::string& text) {
    EXPECT_THAT(machine.windows.systemBoxes, ElementsAre(Pair("Marovane", HasSubstr(text))));
  }
  /// The damaged file is in its place aside.
  void ExpectAside(const std::string& damaged) {
    ASSERT_THAT(SetAside(), Contains("20261105-090000-Marovane.mdb"));
    EXPECT_EQ(machine.realFiles.Read(Data() / "set-aside/20261105-090000-Marovane.mdb"), damaged);
  }

  TestMachine machine;
  Program program{machine.machine, {}};
  std::string whole_;
  std::multiset<std::string> rows_;
};

TEST_F(SalvageTest, WholeRecordsAreLeftAlone) {
  MendRecords(program);
  EXPECT_EQ(machine.realFiles.Read(Data() / kRecords), whole_);
  EXPECT_THAT(SetAside(), IsEmpty());
  EXPECT_THAT(machine.windows.systemBoxes, IsEmpty());
  EXPECT_EQ(ReadSetup(program, "NeedSync"), "");
}

TEST_F(SalvageTest, DamagedPageCostsItsOwnRowsAndTheFileIsSetAside) {
  const std::size_t pages = whole_.size() / PageSize();
  ASSERT_GT(pages, 60U);
  int dear = 0;
  for (std::size_t page = 1; page < pages; page += 3) {
    const std::string damaged = WithRubbishAt(page * PageSize(), PageSize());
    const auto carried = Mended(damaged);
    EXPECT_TRUE(std::ranges::includes(rows_, carried)) << "nothing was made up, page " << page;
    if (machine.windows.systemBoxes.empty()) {
      EXPECT_EQ(carried, rows_) << "an unused page " << page;
      continue;
    }
    ExpectBox("還讀得到的 " + std::to_string(carried.size()));
    ExpectAside(damaged);
    EXPECT_EQ(ReadSetup(program, "NeedSync"), "Y");
    constexpr std::size_t kRowsOfAPage = 150;
    if (Lost(carried) > kRowsOfAPage) ++dear;
  }
  EXPECT_LE(dear, 2) << "only the two pages that lead to the sentences cost more than a page of rows";
}

TEST_F(SalvageTest, DestroyedHeaderCostsNothing) {
  for (const std::size_t length : {std::size_t{16}, std::size_t{100}, PageSize()}) {
    EXPECT_EQ(Mended(WithRubbishAt(0, length)), rows_) << length;
    ExpectBox("set-aside/20261105-090000-Marovane.mdb");
  }
}

TEST_F(SalvageTest, CutFileKeepsWhatIsBeforeTheCut) {
  for (const int percent : {90, 50}) {
    const auto carried =
        Mended(whole_.substr(0, whole_.size() * static_cast<std::size_t>(percent) / 100 + 7));
    EXPECT_TRUE(std::ranges::includes(rows_, carried));
    EXPECT_GT(carried.size() * 4, rows_.size()) << percent;
    EXPECT_GT(Lost(carried), 0U);
  }
  for (const std::string& nothing : {std::string(), std::string(9000, 'x'), whole_.substr(0, 50)}) {
    EXPECT_THAT(Mended(nothing), IsEmpty());
    ExpectBox("還讀得到的 0 筆");
    EXPECT_EQ(machine.realFiles.Read(Data() / "set-aside" / SetAside().at(0)), nothing);
  }
}

TEST_F(SalvageTest, LogOfACrashIsReadAndSetAsideWithItsDatabase) {
  const fs::path crashed = machine.home / "crashed";
  fs::create_directories(crashed);
  {
    const auto db = machine.realDatabases.Open(Data() / kRecords, base::Databases::Mode::kReadWrite);
    db->Run(
        "insert into oksentence values ('9', 'N', 'It was the last one.', '2026-11-05', 'N', '0', '0', 'N')");
    for (const char* name : {"Marovane.mdb", "Marovane.mdb-wal"})
      fs::copy_file(Data() / name, crashed / name);
  }
  std::string bytes = machine.realFiles.Read(crashed / kRecords);
  const std::size_t middle = bytes.size() / PageSize() / 2 * PageSize();
  Damage(bytes.replace(middle, PageSize(), PageSize(), '\xA5'));
  fs::copy_file(crashed / "Marovane.mdb-wal", Data() / "Marovane.mdb-wal");
  MendRecords(program);
  EXPECT_EQ(AllRows(Data() / kRecords).count("oksentence|9|N|It was the last one.|2026-11-05|N|0|0|N"), 1U);
  EXPECT_THAT(SetAside(), Contains("20261105-090000-Marovane.mdb-wal"));
}

TEST_F(SalvageTest, FailedOrKilledAtAnyStepItIsFinishedByTheNextStart) {
  const std::string damaged = WithRubbishAt(whole_.size() / 2 / PageSize() * PageSize(), PageSize());
  const auto expected = Mended(damaged);
  ASSERT_GT(expected.size(), rows_.size() / 2);
  for (const bool kills : {false, true}) {
    for (int step = 1;; ++step) {
      SCOPED_TRACE(std::to_string(step) + (kills ? " killed" : " failed"));
      Damage(damaged);
      machine.windows.systemBoxes.clear();
      machine.files.fault.Reset();
      if (kills) machine.files.fault.KillAt(step);
      if (!kills) machine.files.fault.FailAt(step);
      const bool wasKilled = DiesIn([this] { MendRecords(program); });
      const bool struck = machine.files.fault.Steps() >= step;
      machine.files.fault.Reset();
      if (!struck) {
        ASSERT_GT(step, 5);
        break;
      }
      EXPECT_TRUE(wasKilled || !machine.windows.systemBoxes.empty());
      MendRecords(program);
      EXPECT_EQ(AllRows(Data() / kRecords), expected);
      ExpectAside(damaged);
    }
  }
}

TEST_F(SalvageTest, WithoutAPackageTheDamagedFileStaysAndTheUserGetsAMessage) {
  fs::remove(machine.home / "program/giz/mrvdata.giz");
  const std::string damaged = whole_.substr(0, whole_.size() / 2);
  Damage(damaged);
  MendRecords(program);
  EXPECT_EQ(machine.realFiles.Read(Data() / kRecords), damaged);
  ExpectBox("沒有刪除任何資料");
}

}  // namespace

}  // namespace marovane
