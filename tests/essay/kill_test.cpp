// The program dies before each statement of a walk. What is on the disk must be whole, must show as an
// interrupted essay, and must spare the engine the sentences that were judged.
#include <optional>

#include "essay/report_window.h"
#include "platform/run_time_error.h"
#include "tests/essay/essay_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

class KillTest : public EssayTest {
 protected:
  KillTest() {
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
    return DiesIn([this] { Send("I run. He go home. I walk. It rains."); });
  }

  /// As the next start finds it.
  std::vector<std::string> OnDisk(const std::string& sql) {
    const auto path = machine.home / "tmp" / "marovane" / "Marovane.mdb";
    return Texts(*machine.realDatabases.Open(path, base::Databases::Mode::kReadWrite), sql);
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

  void ExpectWholeRecords() {
    EXPECT_THAT(OnDisk("pragma integrity_check"), ElementsAre("ok"));
    EXPECT_THAT(
        OnDisk("select errcode from errsentence e where (select times from mistakes m where m.Errcode = "
               "e.errcode) is not (select count(*) from errsentence x where x.errcode = e.errcode)"),
        IsEmpty());
    EXPECT_THAT(OnDisk("select sentence from oksentence where essayId <> '0' and essayId not in "
                       "(select essayId from essay)"),
                IsEmpty());
  }

  std::optional<FakeUpload> nextUpload_;
};

class KilledWalk : public KillTest, public ::testing::WithParamInterface<int> {};

TEST_P(KilledWalk, LeavesWholeRecordsFromWhichTheNextOneGoesOn) {
  ASSERT_TRUE(WalkWithKillAt(GetParam()));
  ExpectWholeRecords();
  const auto next = StartAnew();
  for (const auto& essayId : OnDisk("select essayId from essay where finalSet = 'A'")) {
    EXPECT_THAT(EssayReportPage(next->essay, essayId).Markup(), HasSubstr("這篇短文批改過程中被中斷"));
  }
  const auto judged = OnDisk("select sentence from oksentence");
  AnswerNext();
  next->essay.StartOwnEssay("");
  SendFrom(*next->essay.frmEssay, "I run. He goes home. I walk. It rains.");
  for (const auto& sentence : judged) EXPECT_THAT(Asked(), Not(Contains(sentence)));
  EXPECT_THAT(OnDisk("select finalSet from essay order by rowid desc limit 1"), ElementsAre("N"));
  ExpectWholeRecords();
}

INSTANTIATE_TEST_SUITE_P(Statements, KilledWalk, ::testing::Range(1, 30));

TEST_F(KillTest, KnowsHowManyStatementsAWalkHas) {
  ASSERT_FALSE(WalkWithKillAt(0));
  EXPECT_GE(machine.databases.fault.Steps(), 29);  // so that the cases above do kill
}

}  // namespace

}  // namespace marovane
