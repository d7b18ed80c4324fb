// The program dies before each statement of a walk. What is on the disk must be whole, must show as an
// interrupted essay, and must spare the engine the sentences that were judged.
#include "essay/report_window.h"
#include "platform/html.h"
#include "tests/essay/essay_fixture.h"

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto kOk = &FrmMessage::cmdOK;
const char* const kEssay = "I run. He go home. I walk. It rains.";

class KillTest : public EssayTest {
 protected:
  KillTest() {
    replies["He go home."] = "OK_1#AG01#page.htm#*He go* home .";
    composition.records.InsertOkSentence(
        {.sId = "1", .sentence = "It rains.", .sDate = std::chrono::year{2026} / 11 / 1});
    machine.databases.fault.Reset();
  }

  /// Walks until the essay is finished or the program dies. True when it died.
  bool WalkWithKillAt(int step) {
    ExpectMessage("14003", kOk);
    Correct("He goes home.");
    ExpectMessage("14005", kOk);
    machine.databases.fault.KillAt(step);
    try {
      Send(kEssay);
    } catch (const Killed&) {
      return true;
    }
    return false;
  }

  /// As the next start finds it.
  std::vector<std::string> OnDisk(const std::string& sql) {
    std::vector<std::string> texts;
    SqliteDatabases databases;
    databases.Open(machine.home / "tmp" / "marovane" / "Marovane.mdb", Databases::Mode::kReadWrite)
        ->Run(sql, {}, [&](const DbRow& row) { texts.push_back(row.Text(0)); });
    return texts;
  }

  void ExpectWholeRecords(int step) {
    EXPECT_THAT(OnDisk("pragma integrity_check"), ::testing::ElementsAre("ok")) << step;
    EXPECT_THAT(
        OnDisk("select errcode from errsentence e where (select times from mistakes m where m.Errcode = "
               "e.errcode) is not (select count(*) from errsentence x where x.errcode = e.errcode)"),
        IsEmpty())
        << step;
    EXPECT_THAT(
        OnDisk("select sentence from oksentence where essayId <> '0' and essayId not in (select essayId "
               "from essay)"),
        IsEmpty())
        << step;
  }
};

class KilledWalk : public KillTest, public ::testing::WithParamInterface<int> {};

// Every second statement is enough: a transaction counts as three and more.
TEST_P(KilledWalk, LeavesWholeRecordsFromWhichTheNextOneGoesOn) {
  ASSERT_TRUE(WalkWithKillAt(GetParam()));
  ExpectWholeRecords(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Statements, KilledWalk, ::testing::Range(1, 30));

TEST_F(KillTest, KnowsHowManyStatementsAWalkHas) {
  ASSERT_FALSE(WalkWithKillAt(0));
  EXPECT_GE(machine.databases.fault.Steps(), 29);  // so that the cases above do kill
}

TEST_F(KillTest, ShowsAsInterruptedAndReusesWhatWasJudged) {
  machine.databases.fault.Reset();
  ExpectMessage("14003", kOk,
                [this] { machine.databases.fault.KillAt(machine.databases.fault.Steps() + 1); });
  Correct("He goes home.");
  EXPECT_THROW(Send(kEssay), Killed);
  // The next start, on the same files.
  machine.databases.fault.Reset();
  Composition next(machine.machine, InstallationValues{});
  next.program.app = app;
  next.program.hall.frmUpload = {};
  const auto essayId = OnDisk("select essayId from essay");
  ASSERT_THAT(essayId, SizeIs(1));
  const std::string report = HtmlToText(EssayReportPage(next.essay, essayId.front()));
  EXPECT_THAT(report, HasSubstr("這篇短文批改過程中被中斷"));
  EXPECT_THAT(report, HasSubstr("全文共 4 個句子，共計 9 個字，犯錯 1 次"));
  EXPECT_THAT(Asked(), ::testing::ElementsAre("I run.", "He go home."));
  machine.http.requests.clear();
  next.program.app.gEssayMode = false;
  next.frmMain->Show();
  ExpectMessage("14005", kOk);
  next.essay.frmEssay->Show();
  machine.user.Focus(next.essay.frmEssay->txtInput);
  next.essay.frmEssay->txtInput.Text = "I run. He goes home.";
  machine.user.Click(next.essay.frmEssay->picButtons(1));
  EXPECT_THAT(Asked(), ::testing::ElementsAre("He goes home."));
}

}  // namespace
