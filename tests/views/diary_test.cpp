#include "views/diary.h"

#include "base/day.h"
#include "platform/run_time_error.h"
#include "tests/views/views_fixture.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;
using namespace ::testing;

/// Remembers what it was asked to show.
class FakeSentences : public FakeForm<DaySentences> {
 public:
  explicit FakeSentences(Machine& theMachine) : FakeForm(theMachine, "frmSentences") {}
  void ShowDaySentences(const std::string& kind, const std::string& days) override {
    asked.push_back(kind + ":" + days);
  }
  std::vector<std::string> asked;
};

class DiaryTest : public ViewsTest {
 protected:
  DiaryTest() { FakeHall::Lead(program.hall.frmSentences, frmSentences); }

  FrmDiary& Open() {
    frmDiary->Show();
    LoadInputs(frmDiary->webHtml);
    return *frmDiary;
  }

  FakeSentences frmSentences{machine.machine};
  Window<FrmDiary> frmDiary{program, records, errList};
};

TEST_F(DiaryTest, ListsDaysWithTheirCountsNewestFirst) {
  PutOk({"1", "2026-11-05", "a"});
  PutOk({"2", "2026-11-05", "b", "D"});  // deleted, but its day has others: it counts
  PutOk({"3", "2026-11-05", "c", "Y", "77"});
  PutErr({"4", "2026-11-05", "d", "Y", ""});
  PutErr({"5", "2026-10-30", "e"});
  PutOk({"6", "2026-11-01", "f", "D"});
  PutErr({"7", "2026-11-01", "g", "D"});
  PutOk({"8", "2026-11-02", "h", "N", "77"});
  Open();
  DayRecords days(records);
  std::string shown;
  for (const auto& [day, ok, err] : DiaryDays(days)) {
    shown += base::ShownDay(day) + " " + std::to_string(ok) + " " + std::to_string(err) + "|";
  }
  EXPECT_EQ(shown, "2026/11/5 2 1|2026/10/30 0 1|");
  EXPECT_EQ(frmDiary->webHtml.Value("chk1") + frmDiary->webHtml.Value("chk2"), "2026/11/52026/10/30");
  EXPECT_EQ(frmDiary->webHtml.inputChecked.size(), 2);
  // The day of essays only and the day of deleted ones only differ in the derived table.
  EXPECT_EQ(Query("select sDate || ':' || chkright || '/' || chkwrong || recFlag from workRec order by 1"),
            "2026-10-30:0/1N 2026-11-02:1/0N 2026-11-05:2/1N");
}

TEST_F(DiaryTest, PageHasTheRowsWithThousandsSeparators) {
  const base::Day day{std::chrono::year{2026} / 3 / 7};
  const std::string page = DiaryPage({{day, 1234567, 1000}}).Markup();
  EXPECT_THAT(page,
              HasSubstr("<tr height='30' style='font-family: Arial; font-size: 15px; color: #FFFFFF'>\r\n"
                        "<td width='10%' align='center'><input type='checkbox' name='chk1' id='chk1' "
                        "value='2026/3/7'></td>\r\n"
                        "<td width='30%' align='left'>2026/3/7</td>\r\n"
                        "<td width='20%' align='right'>1,235,567</td>\r\n"
                        "<td width='20%' align='right'>1,234,567</td>\r\n"
                        "<td width='20%' align='right'>1,000</td>\r\n</tr>"));
  EXPECT_THAT(page, EndsWith("</table>\r\n</body>\r\n</html>\r\n"));
  EXPECT_THAT(DiaryPage({}).Markup(), AllOf(HasSubstr("犯錯次數"), Not(HasSubstr("id='chk"))));
}

TEST_F(DiaryTest, RebuildingTakesASecondOfTheEmptyScreen) {
  fakes.frmMain.Left = 4711;
  std::vector<int> lefts;
  const auto watch = fakes.frmMain.Left.Watch([&](int left) { lefts.push_back(left); });
  const auto before = machine.loop.Elapsed();
  Open();
  EXPECT_GE(machine.loop.Elapsed() - before, 1000ms);
  EXPECT_LT(machine.loop.Elapsed() - before, 1500ms);
  EXPECT_THAT(lefts, ElementsAre(-20000, 4711));
}

TEST_F(DiaryTest, AFailingDatabaseBringsTheMainWindowBack) {
  PutOkOn({"2026-11-05"});
  fakes.frmMain.Left = 4711;
  records.Db();
  for (int step = 1; step <= 6; ++step) {
    machine.databases.fault.Reset();
    machine.databases.fault.FailAt(step);
    EXPECT_THROW(Open(), RunTimeError) << step;
    EXPECT_EQ(fakes.frmMain.Left, 4711) << step;
    EXPECT_FALSE(app.gOpenDiary) << step;
  }
  machine.databases.fault.Reset();
  Open();
  EXPECT_EQ(frmDiary->webHtml.Value("chk1"), "2026/11/5");
}

TEST_F(DiaryTest, ButtonsWantAChosenDay) {
  PutOkOn({"2026-11-05"});
  Open();
  for (int button : {0, 1}) {
    ExpectMessage(Message::kChooseDays);
    machine.user.Click(frmDiary->picButtons(button));
  }
  EXPECT_TRUE(frmSentences.asked.empty());
  EXPECT_EQ(Query("select upload from oksentence"), "N");
}

TEST_F(DiaryTest, ShowsTheSentencesOfAllChosenDays) {
  PutOkOn({"2026-11-02", "2026-11-03", "2026-11-04", "2026-11-05"});
  Open();
  Check(frmDiary->webHtml, {1, 2, 4});
  frmSentences.Visible = true;
  app.gOpenSentences = true;
  machine.user.Click(frmDiary->picButtons(0));
  EXPECT_THAT(frmSentences.asked, ElementsAre("OKONLY:2026/11/5#2026/11/4#2026/11/2"));
  EXPECT_TRUE(frmSentences.Visible);
}

TEST_F(DiaryTest, DeletesChosenDaysAndRebuildsAfterASecond) {
  PutOk({"1", "2026-11-05", "a", "Y"});
  PutOk({"2", "2026-11-05", "b", "Y", "77"});
  PutErr({"3", "2026-11-05", "c"});
  PutOk({"4", "2026-11-04", "d"});
  Open();
  Check(frmDiary->webHtml, {1});
  ExpectMessage(Message::kDeleteDays, kCancel);
  machine.user.Click(frmDiary->picButtons(1));
  EXPECT_EQ(Query("select upload from oksentence order by sId"), "Y Y N");
  ExpectMessage(Message::kDeleteDays);
  machine.user.Click(frmDiary->picButtons(1));
  EXPECT_EQ(Query("select upload from oksentence order by sId"), "D D N");
  EXPECT_EQ(Query("select upload from errsentence"), "D");
  EXPECT_THAT(frmDiary->webHtml.Page(), HasSubstr("2026/11/5"));
  ExpectMessage(Message::kDeleted);
  machine.loop.Wait(3500ms);
  EXPECT_THAT(frmDiary->webHtml.Page(), AllOf(HasSubstr("2026/11/4"), Not(HasSubstr("2026/11/5"))));
}

TEST_F(DiaryTest, SwitchesSelectAllNoneAndInvert) {
  PutOkOn({"2026-11-03", "2026-11-04", "2026-11-05"});
  FrmDiary& diary = Open();
  const auto marks = [&] {
    std::string text;
    for (const char* id : {"chk1", "chk2", "chk3"}) text += diary.webHtml.Checked(id) ? 'x' : '-';
    return text;
  };
  Check(diary.webHtml, {2});
  machine.user.Click(diary.picSelectAll(1));
  EXPECT_EQ(marks() + diary.lblCheckAll(1).Caption(), "x-x1");
  machine.user.Click(diary.lblSelectAll(1));
  EXPECT_EQ(marks() + diary.lblCheckAll(1).Caption(), "-x-0");
  machine.user.Click(diary.lblSelectAll(0));
  EXPECT_EQ(marks(), "xxx");
  EXPECT_NE(diary.picSelectAll(0).Picture(), diary.picSelectAll(1).Picture());
  machine.user.Click(diary.picSelectAll(0));
  EXPECT_EQ(marks(), "---");
  EXPECT_EQ(diary.GetCheckCounts(), 0);
}

TEST_F(DiaryTest, ChartsAreTheSecondPage) {
  PutOkOn({"2026-11-05"});
  FrmDiary& diary = Open();
  EXPECT_FALSE(diary.webCharts.Visible);
  machine.user.Click(diary.picTabs(1));
  EXPECT_TRUE(diary.webCharts.Visible && !diary.picButtons(1).Visible);
  EXPECT_THAT(diary.webCharts.Page(), HasSubstr("2026/11/5：正確 1，犯錯 0"));
  machine.user.Click(diary.picTabs(0));
  EXPECT_TRUE(!diary.webCharts.Visible && diary.picButtons(1).Visible);
  // Closing clears the flag and fades out.
  EXPECT_TRUE(app.gOpenDiary);
  machine.user.Click(diary.imgClose);
  EXPECT_FALSE(app.gOpenDiary);
  machine.loop.WaitUntil([&] { return !frmDiary.IsLoaded(); });
}

}  // namespace

}  // namespace marovane
