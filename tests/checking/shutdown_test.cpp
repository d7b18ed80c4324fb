// The end of a run: what goes, what is kept, and that it ends.
#include "base/day.h"
#include "records/age_cleaning.h"
#include "tests/checking/checking_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr base::Day kServerDate{std::chrono::year{2026} / 11 / 5};
constexpr const char* kCut = "2026-05-09";  // 180 days before it
constexpr const char* kDayBefore = "2026-05-08";

class ShutdownTest : public CheckingTest {
 protected:
  ShutdownTest() {
    app.gServerDate = kServerDate;
    app.gAccountNo = "4711";
    Main().Show();
    Main().Left = 3000;
  }

  void PutRow(const std::string& table, const std::string& id, const std::string& day,
              const std::string& upload = "Y") {
    const std::map<std::string, std::string> columns{
        {"oksentence", "?1, 'N', 'text', ?2, ?3, '0', '0', 'N'"},
        {"errsentence", "?1, 'text', 'AG01', ?2, ?3, '0', '0', 'N'"},
        {"essay", "?1, 'w', 'q', 'o', 'n', ?3, 'N', ?2"},
        {"workRec", "?2, ?1, ?3, 'N'"}};
    machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite)
        ->Run("insert into " + table + " values (" + columns.at(table) + ")", {id, day, upload});
  }
  void PutMany(const std::string& table, int count) {
    const std::string columns = table == "oksentence" ? "value, 'N', 'text'" : "value, 'text', 'AG01'";
    const std::string most = std::to_string(count);
    Execute("with recursive n(value) as (select 1 union all select value + 1 from n where value < " + most +
            ") insert into " + table + " select " + columns +
            ", '2026-11-01', 'Y', '0', '0', 'N' from n where value <= " + most);
  }

  std::vector<std::string> Ids(const std::filesystem::path& path) {
    return Rows(machine.realDatabases, path,
                "select sId from oksentence union all select id from errsentence union all "
                "select essayId from essay order by 1");
  }

  /// Leaves the program, and fails when it does not end.
  void Leave() {
    Main().CloseAppProcdure();
    EXPECT_THROW(machine.loop.WaitUntil([] { return false; }), ProgramEnd);
  }
  /// Leaves the program up to its fade-out, which would end it.
  void Close() {
    Main().CloseAppProcdure();
    EXPECT_TRUE(Main().tmrTransparentForm.Enabled) << "the program ends";
    EXPECT_FALSE(Main().Enabled);
    EXPECT_EQ(Main().Left, 3000);
    Main().tmrTransparentForm.Enabled = false;
  }
  /// Begins anew with one sentence that is too old.
  void PutOldAlone() {
    Execute("delete from oksentence");
    std::filesystem::remove(archive);
    PutRow("oksentence", "1", kDayBefore);
  }

  const std::filesystem::path archive = recordsPath.parent_path() / "archive.mdb";
};

TEST_F(ShutdownTest, OldRecordsGoIntoTheArchive) {
  PutRow("oksentence", "1", kDayBefore, "N");  // not yet uploaded: it goes too
  PutRow("oksentence", "2", kCut);
  PutRow("errsentence", "3", "2020-01-01", "D");
  PutRow("errsentence", "4", "2026-11-05");
  PutRow("essay", "5", kDayBefore);
  PutRow("essay", "6", kCut);
  PutRow("workRec", "1", kDayBefore);
  PutRow("workRec", "1", kCut);
  Leave();
  EXPECT_THAT(Ids(recordsPath), ElementsAre("2", "4", "6"));
  EXPECT_THAT(Ids(archive), ElementsAre("1", "3", "5"));
  EXPECT_THAT(Rows(machine.realDatabases, archive, "select * from errsentence"),
              ElementsAre("3|text|AG01|2020-01-01|D|0|0|N"));
  EXPECT_THAT(Query("select sDate from workRec"), ElementsAre(kCut));
}

TEST_F(ShutdownTest, NothingGoesWithoutAServerDateOrInTheCloudEditionWhichGivesNoAdvice) {
  PutRow("errsentence", "old", "1950-01-01");
  app.gServerDate = AppState{}.gServerDate;
  Close();
  EXPECT_THAT(Ids(recordsPath), ElementsAre("old"));
  PutMany("oksentence", 5001);
  app.gServerDate = kServerDate;
  app.gEdition = "XQD";
  Leave();
  EXPECT_EQ(Ids(recordsPath).size(), 5002);
  EXPECT_FALSE(std::filesystem::exists(archive));
}

TEST_F(ShutdownTest, AdvisesOnEachTableByItself) {
  const struct {
    int ok, err;
    bool advises;
  } cases[] = {{5000, 5000, false}, {5001, 0, true}, {0, 5001, true}};
  for (const auto& [ok, err, advises] : cases) {
    SCOPED_TRACE(ok);
    Execute("delete from oksentence; delete from errsentence");
    PutMany("oksentence", ok);
    PutMany("errsentence", err);
    if (advises) ExpectMessage(Message::kManySentences);
    Main().Enabled = true;
    Close();
  }
}

TEST_F(ShutdownTest, UploadsWhatIsNew) {
  const struct {
    const char *table, *flag;
    bool uploads;
  } cases[] = {{"oksentence", "N", true},
               {"errsentence", "N", true},
               {"essay", "N", true},
               {"oksentence", "D", false},
               {"errsentence", "Y", false}};
  for (const auto& [table, flag, uploads] : cases) {
    SCOPED_TRACE(std::string(table) + flag);
    fakes.frmUpload.modes.clear();
    Execute("delete from oksentence; delete from errsentence; delete from essay");
    PutRow(table, "1", "2026-11-05", flag);
    WriteNeedSync(program, "Y");
    Close();
    EXPECT_EQ(fakes.frmUpload.modes, std::vector<std::string>(uploads ? 1 : 0, "UPLOAD"));
    EXPECT_EQ(NeedSync(), uploads ? "N" : "Y");
  }
  EXPECT_EQ(app.gUploadAccountNo, "4711");
}

TEST_F(ShutdownTest, ShowsItsProgressBoxAlone) {
  std::vector<std::string> seen;
  program.hall.frmUpload.LeadsTo([&]() -> UploadRun& {
    seen.push_back(std::to_string(Main().Left()) + (Main().Enabled ? " enabled" : " disabled"));
    EXPECT_THAT(program.frmMessage->lblMessage.Caption(), HasSubstr("結束後會自動關閉程式"));
    return fakes.frmUpload;
  });
  PutRow("oksentence", "1", "2026-11-05", "N");
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
              UnorderedElementsAre("tmp", "chkresult.htm", "mytmp1.txt", "chkresult.txt", "tolvex2.exe"));
}

TEST_F(ShutdownTest, ADatabaseErrorIsReportedAndLosesNothing) {
  PutRow("oksentence", "1", kDayBefore);
  PutRow("errsentence", "2", "2026-11-05");
  records.Db();
  machine.databases.fault.Reset();
  Close();
  const int steps = machine.databases.fault.Steps();
  ASSERT_GT(steps, 10);
  for (int step = 1; step <= steps; ++step) {
    SCOPED_TRACE(step);
    PutOldAlone();
    FailStatement(step);
    ExpectMessage(Message::kUnexpectedError);
    Close();
    const auto kept = Ids(recordsPath);
    const bool isInRecords = std::ranges::find(kept, "1") != kept.end();
    const bool isInArchive = std::filesystem::exists(archive) && !isInRecords && !Ids(archive).empty();
    EXPECT_TRUE(isInRecords || isInArchive);
  }
}

TEST_F(ShutdownTest, AKillAtAnyPointLosesNothingAndDoublesNothing) {
  const auto clean = [this] {
    RecordDb own(program);
    RemoveRecordsBefore(program, own, kServerDate);
  };
  for (int step = 1; step <= 40; ++step) {
    SCOPED_TRACE(step);
    PutOldAlone();
    machine.databases.fault.Reset();
    machine.databases.fault.KillAt(step);
    const bool isKilled = DiesIn(clean);
    machine.databases.fault.Reset();
    clean();
    EXPECT_THAT(Ids(recordsPath), IsEmpty());
    EXPECT_THAT(Ids(archive), ElementsAre("1"));
    if (!isKilled) {
      EXPECT_GT(step, 10);
      return;
    }
  }
  FAIL() << "the cleaning runs more statements than were tried";
}

}  // namespace

}  // namespace marovane
