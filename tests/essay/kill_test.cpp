// The program dies before each statement of a walk. What is on the disk must be whole, must show as an
// interrupted essay, and must spare the engine the sentences that were judged.
#include <optional>

#include "essay/report_window.h"
#include "platform/html.h"
#include "platform/run_time_error.h"
#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

const char* const kEssay = "I run. He go home. I walk. It rains.";

class KillTest : public EssayTest {
 protected:
  KillTest() {
    replies["He go home."] = "OK_1#AG01#page.htm#*He go* home .";
    composition.records.InsertOkSentence(
        {.sId = "1", .sentence = "It rains.", .sDate = std::chrono::year{2026} / 11 / 1});
    machine.databases.fault.Reset();
  }

  /// Answers a message, whichever comes: it may be the old program's or the new one's.
  void AnswerNext() {
    machine.user.OnModal([this](Form& form) { machine.user.Click(dynamic_cast<FrmMessage&>(form).cmdOK); });
  }

  /// Walks until the essay is finished or the program dies. True when it died.
  bool WalkWithKillAt(int step) {
    AnswerNext();
    Correct("He goes home.");
    AnswerNext();
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
    base::SqliteDatabases databases;
    databases.Open(machine.home / "tmp" / "marovane" / "Marovane.mdb", base::Databases::Mode::kReadWrite)
        ->Run(sql, {}, [&](const base::DbRow& row) { texts.push_back(row.Text(0)); });
    return texts;
  }

  /// A real death would undo it; here the old connection is still open.
  void CloseOldTransaction() {
    try {
      composition.records.Db().Run("rollback");
    } catch (const RunTimeError&) {
      return;  // there was none
    }
  }

  /// The next start, on the same files.
  std::unique_ptr<Composition> StartAnew() {
    machine.databases.fault.Reset();
    machine.http.requests.clear();
    CloseOldTransaction();
    auto next = std::make_unique<Composition>(machine.machine, InstallationValues{});
    next->program.app = app;
    next->program.app.gEssayMode = false;
    nextUpload_.emplace(next->program.app);
    LeadAside(*next, *nextUpload_);
    next->frmMain->Show();
    return next;
  }

  void SendAgain(Composition& next, const std::string& text) {
    next.essay.StartOwnEssay("");
    machine.user.Focus(next.essay.frmEssay->txtInput);
    next.essay.frmEssay->txtInput.Text = text;
    machine.user.Click(next.essay.frmEssay->picButtons(1));
  }

  void ExpectWholeRecords(int step) {
    EXPECT_THAT(OnDisk("pragma integrity_check"), ElementsAre("ok")) << step;
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

  std::optional<FakeUpload> nextUpload_;
};

class KilledWalk : public KillTest, public ::testing::WithParamInterface<int> {};

TEST_P(KilledWalk, LeavesWholeRecordsFromWhichTheNextOneGoesOn) {
  ASSERT_TRUE(WalkWithKillAt(GetParam()));
  ExpectWholeRecords(GetParam());
  const auto next = StartAnew();
  for (const auto& essayId : OnDisk("select essayId from essay where finalSet = 'A'")) {
    EXPECT_THAT(EssayReportPage(next->essay, essayId).Markup(), HasSubstr("這篇短文批改過程中被中斷"));
  }
  const auto judged = OnDisk("select sentence from oksentence");
  AnswerNext();
  SendAgain(*next, "I run. He goes home. I walk. It rains.");
  for (const auto& sentence : judged) EXPECT_THAT(Asked(), Not(Contains(sentence)));
  EXPECT_THAT(OnDisk("select finalSet from essay order by rowid desc limit 1"), ElementsAre("N"));
  ExpectWholeRecords(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Statements, KilledWalk, ::testing::Range(1, 30));

TEST_F(KillTest, KnowsHowManyStatementsAWalkHas) {
  ASSERT_FALSE(WalkWithKillAt(0));
  EXPECT_GE(machine.databases.fault.Steps(), 29);  // so that the cases above do kill
}

TEST_F(KillTest, ShowsAsInterruptedAndReusesWhatWasJudged) {
  machine.databases.fault.Reset();
  ExpectMessage(Message::kWrongSentence, kOk,
                [this] { machine.databases.fault.KillAt(machine.databases.fault.Steps() + 1); });
  Correct("He goes home.");
  EXPECT_THROW(Send(kEssay), Killed);
  EXPECT_THAT(Asked(), ElementsAre("I run.", "He go home."));
  const auto next = StartAnew();
  const auto essayId = OnDisk("select essayId from essay");
  ASSERT_THAT(essayId, SizeIs(1));
  const std::string report = HtmlToText(EssayReportPage(next->essay, essayId.front()).Markup());
  EXPECT_THAT(report, HasSubstr("這篇短文批改過程中被中斷"));
  EXPECT_THAT(report, HasSubstr("全文共 4 個句子，共計 9 個字，犯錯 1 次"));
  ExpectMessage(Message::kEssayDone);
  SendAgain(*next, "I run. He goes home.");
  EXPECT_THAT(Asked(), ElementsAre("He goes home."));
}

}  // namespace

}  // namespace marovane
