// The end of a run: what goes, what is kept, and that it ends.
#include "base/day.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"
#include "records/age_cleaning.h"
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr base::Day kServerDate{std::chrono::year{2026} / 11 / 5};
// 180 days before it.
constexpr const char* kCut = "2026-05-09";
constexpr const char* kDayBefore = "2026-05-08";

/// An upload that ends after a while.
class SlowUpload : public UploadRun {
 public:
  explicit SlowUpload(EventLoop& loop, AppState& app) : app_(app), end_(loop, 1000) {
    end_.onTick = [this] {
      end_.Enabled = false;
      app_.gUploadFinished = true;
    };
  }
  void SyncProgress(const std::string& mode) override {
    runs.push_back(mode + " " + app_.gUploadAccountNo);
    EXPECT_FALSE(app_.gUploadFinished);
    end_.Enabled = true;
  }
  std::vector<std::string> runs;

 private:
  AppState& app_;
  Timer end_;
};

class ShutdownTest : public CheckingTest {
 protected:
  ShutdownTest() {
    app.gServerDate = kServerDate;
    app.gAccountNo = "4711";
    Main().Show();
    Main().Left = 3000;
  }

  void Put(const std::string& table, const std::string& id, const std::string& day,
           const std::string& upload = "Y") {
    auto db = machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite);
    const std::map<std::string, std::string> columns{
        {"oksentence", "?1, 'N', 'text', ?2, ?3, '0', '0', 'N'"},
        {"errsentence", "?1, 'text', 'AG01', ?2, ?3, '0', '0', 'N'"},
        {"essay", "?1, 'w', 'q', 'o', 'n', ?3, 'N', ?2"},
        {"workRec", "?2, ?1, ?3, 'N'"}};
    db->Run("insert into " + table + " values (" + columns.at(table) + ")", {id, day, upload});
  }

  void PutMany(const std::string& table, int count) {
    auto db = machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite);
    const std::string columns = table == "oksentence" ? "value, 'N', 'text'" : "value, 'text', 'AG01'";
    db->RunScript("with recursive n(value) as (select 1 union all select value + 1 from n where value < " +
                  std::to_string(count) + ") insert into " + table + " select " + columns +
                  ", '2026-11-01', 'Y', '0', '0', 'N' from n");
  }

  std::vector<std::string> Ids(const std::filesystem::path& path) {
    return Rows(machine.realDatabases, path,
                "select sId from oksentence union all select id from errsentence union all "
                "select essayId from essay order by 1",
                1);
  }

  /// Leaves the program, and fails when it does not end.
  void Leave() {
    Main().CloseAppProcdure();
    EXPECT_THROW(machine.loop.WaitUntil([] { return false; }), ProgramEnd);
  }

  const std::filesystem::path archive = recordsPath.parent_path() / "archive.mdb";
};

TEST_F(ShutdownTest, OldRecordsGoIntoTheArchive) {
  Put("oksentence", "1", kDayBefore, "N");  // not yet uploaded: it goes too
  Put("oksentence", "2", kCut);
  Put("errsentence", "3", "2020-01-01", "D");
  Put("errsentence", "4", "2026-11-05");
  Put("essay", "5", kDayBefore);
  Put("essay", "6", kCut);
  Put("workRec", "1", kDayBefore);
  Put("workRec", "1", kCut);
  Leave();
  EXPECT_THAT(Ids(recordsPath), ElementsAre("2", "4", "6"));
  EXPECT_THAT(Ids(archive), ElementsAre("1", "3", "5"));
  EXPECT_THAT(Rows(machine.realDatabases, archive, "select * from errsentence", 8),
              ElementsAre("3|text|AG01|2020-01-01|D|0|0|N"));
  EXPECT_THAT(Rows(machine.realDatabases, recordsPath, "select sDate from workRec", 1), ElementsAre(kCut));
}

TEST_F(ShutdownTest, NothingGoesWithoutAServerDate) {
  Put("oksentence", "1", "1950-01-01");
  app.gServerDate = AppState{}.gServerDate;
  Leave();
  EXPECT_THAT(Ids(recordsPath), ElementsAre("1"));
  EXPECT_FALSE(std::filesystem::exists(archive));
}

TEST_F(ShutdownTest, TheCloudEditionKeepsAllAndGivesNoAdvice) {
  PutMany("oksentence", 5001);
  Put("errsentence", "old", "1950-01-01");
  app.gEdition = "XQD";
  Leave();
  EXPECT_EQ(Ids(recordsPath).size(), 5002);
}

TEST_F(ShutdownTest, AdvisesOnEachTableByItself) {
  const struct {
    int ok, err;
    bool advises;
  } kCases[] = {{5000, 5000, false}, {1, 0, true}, {0, 1, true}};
  for (const auto& c : kCases) {
    if (c.ok > 0) PutMany("oksentence", c.ok);
    if (c.err > 0) PutMany("errsentence", c.err);
    if (c.advises) ExpectMessage(Message::kManySentences);
    Main().CloseAppProcdure();
    EXPECT_EQ(machine.user.Expected(), 0) << c.ok << " " << c.err;
    Main().tmrTransparentForm.Enabled = false;
    Main().Enabled = true;
    if (c.ok == 1) {
      machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite)
          ->Run("delete from oksentence where rowid > 5000");
    }
  }
}

TEST_F(ShutdownTest, UploadsWhatIsNew) {
  const struct {
    const char *table, *flag;
    std::vector<std::string> runs;
    const char* needSync;
  } kCases[] = {
      {"oksentence", "N", {"UPLOAD 4711"}, "N"},
      {"errsentence", "N", {"UPLOAD 4711"}, "N"},
      {"essay", "N", {"UPLOAD 4711"}, "N"},
      {"oksentence", "D", {}, "Y"},
      {"errsentence", "Y", {}, "Y"},
  };
  for (const auto& c : kCases) {
    SlowUpload upload(machine.loop, app);
    FakeHall::Lead(program.hall.frmUpload, upload);
    machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite)
        ->RunScript("delete from oksentence; delete from errsentence; delete from essay");
    Put(c.table, "1", "2026-11-05", c.flag);
    WriteNeedSync(program, "Y");
    app.gUploadFinished = true;  // of an earlier run
    Main().CloseAppProcdure();
    EXPECT_EQ(upload.runs, c.runs) << c.table << c.flag;
    EXPECT_EQ(NeedSync(), c.needSync) << c.table << c.flag;
    EXPECT_EQ(Main().Left, 3000);
    Main().tmrTransparentForm.Enabled = false;
  }
}

TEST_F(ShutdownTest, StandsAloneWithItsProgressBox) {
  std::vector<std::string> seen;
  SlowUpload upload(machine.loop, app);
  program.hall.frmUpload.LeadsTo([&]() -> UploadRun& {
    seen.push_back(std::to_string(Main().Left()) + (Main().Enabled ? " enabled" : " disabled"));
    EXPECT_THAT(program.frmMessage->lblMessage.Caption(), HasSubstr("結束後會自動關閉程式"));
    return upload;
  });
  Put("oksentence", "1", "2026-11-05", "N");
  Leave();
  EXPECT_THAT(seen, ElementsAre("-20000 disabled"));
  EXPECT_THAT(machine.windows.OpenForms(), IsEmpty());
}

TEST_F(ShutdownTest, RemovesTheFilesOfTheEngine) {
  for (const char* name : {"tmp1.txt", "tmpx.htm", "tmp", "chkresult.txt", "chkresult.htm", "mytmp1.txt"}) {
    machine.realFiles.Write(app.gEngineDir + name, "", false);
  }
  machine.files.fault.FailAt(1);  // one that is locked keeps none of the others
  Leave();
  EXPECT_THAT(machine.realFiles.List(app.gEngineDir),
              ::testing::AllOf(::testing::Contains("tmp"), ::testing::Contains("chkresult.htm"),
                               ::testing::Contains("mytmp1.txt"), ::testing::Contains("chkresult.txt"),
                               ::testing::Not(::testing::Contains("tmp1.txt")),
                               ::testing::Not(::testing::Contains("tmpx.htm"))));
}

TEST_F(ShutdownTest, ADatabaseErrorIsToldAndLosesNothing) {
  Put("oksentence", "1", kDayBefore);
  Put("errsentence", "2", "2026-11-05");
  records.Db();
  const int before = machine.databases.fault.Steps();
  machine.databases.fault.Reset();
  Main().CloseAppProcdure();
  const int steps = machine.databases.fault.Steps();
  ASSERT_GT(steps, 10);
  EXPECT_GT(before, 0);
  for (int step = 1; step <= steps; ++step) {
    Main().tmrTransparentForm.Enabled = false;
    machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite)->Run("delete from oksentence");
    std::filesystem::remove(archive);
    Put("oksentence", "1", kDayBefore);
    machine.databases.fault.Reset();
    machine.databases.fault.FailAt(step);
    ExpectMessage(Message::kUnexpectedError);
    Main().CloseAppProcdure();
    EXPECT_EQ(machine.user.Expected(), 0) << step;
    EXPECT_TRUE(Main().tmrTransparentForm.Enabled) << step << ": the program ends all the same";
    EXPECT_FALSE(Main().Enabled) << step;
    EXPECT_EQ(Main().Left, 3000) << step;
    const auto kept = Ids(recordsPath);
    const bool isInRecords = std::ranges::find(kept, "1") != kept.end();
    const bool isInArchive = std::filesystem::exists(archive) && !isInRecords && !Ids(archive).empty();
    EXPECT_TRUE(isInRecords || isInArchive) << step;
  }
}

TEST_F(ShutdownTest, AKillAtAnyPointLosesNothingAndDoublesNothing) {
  for (int step = 1; step <= 40; ++step) {
    machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite)->Run("delete from oksentence");
    std::filesystem::remove(archive);
    Put("oksentence", "1", kDayBefore);
    FailingDatabases dying(machine.realDatabases);
    Machine other{machine.loop, machine.windows,   machine.desktop, machine.http,       machine.files,
                  dying,        machine.processes, machine.chinese, machine.environment};
    Program victim(other, {});
    victim.app.gConnRecords = app.gConnRecords;
    dying.fault.KillAt(step);
    bool isKilled = false;
    try {
      RecordDb killed(victim);
      AgeCleaning(victim, killed).RemoveBefore(kServerDate);
    } catch (const Killed&) {
      isKilled = true;
    }
    RecordDb next(program);
    AgeCleaning(program, next).RemoveBefore(kServerDate);
    EXPECT_THAT(Ids(recordsPath), IsEmpty()) << step;
    EXPECT_THAT(Ids(archive), ElementsAre("1")) << step;
    if (!isKilled) {
      EXPECT_GT(step, 10);
      return;
    }
  }
  FAIL() << "the cleaning takes more statements than were tried";
}

}  // namespace

}  // namespace marovane
