#include "views/charts.h"

#include "base/day.h"
#include "tests/views/views_fixture.h"
#include "views/chart_drawing.h"

namespace marovane {

namespace {

using namespace ::testing;

constexpr std::chrono::year kYear{2026};
constexpr base::Day kToday{kYear / 11 / 5};  // a Thursday

using ChartsTest = ViewsTest;

/// The counts of right and faulty sentences side by side.
int Counts(const PracticeDay& entry) { return entry.right * 10 + entry.faulty; }

TEST_F(ChartsTest, WeeksBeginOnMonday) {
  const std::pair<base::Day, base::Day> kCases[] = {
      {kToday, kYear / 11 / 2},
      {kYear / 11 / 2, kYear / 11 / 2},
      {kYear / 11 / 1, kYear / 10 / 26},
      {kYear / 1 / 3, std::chrono::year{2025} / 12 / 29},
  };
  for (const auto& [day, monday] : kCases) EXPECT_EQ(MondayOf(day), monday) << base::ShownDay(day);
}

TEST_F(ChartsTest, SpreadsOverDaysAndWeeks) {
  const base::Day first{kYear / 10 / 26};
  const auto weeks = Spread({{first, 1, 2}, {kYear / 11 / 1, 3, 0}, {kToday, 5, 1}}, first, kToday, 7);
  ASSERT_EQ(weeks.size(), 2);
  EXPECT_EQ(Counts(weeks[0]), 42);
  EXPECT_EQ(Counts(weeks[1]), 51);
  EXPECT_EQ(Spread({}, first, kToday, 1).size(), 11);
}

TEST_F(ChartsTest, CollectsWhatIsNotDeletedFromItsOwnDays) {
  PutOk({"1", "2026-11-05", "a"});
  PutOk({"2", "2026-11-05", "b", "D"});
  PutErr({"3", "2026-11-05", "c", "Y", "77", "AG01"});
  PutErr({"4", "2026-11-02", "d", "Y", "0", "AG01"});
  PutErr({"5", "2026-11-02", "e", "Y", "0", "XX01"});
  PutErr({"6", "2026-11-02", "f", "Y", "0", "0"});
  PutErr({"7", "2026-11-02", "g", "D", "0", "XX01"});
  PutOk({"8", "2026-05-11", "the first day of the half year"});
  PutOk({"9", "2026-05-10", "before it"});
  PutOk({"10", "2026-11-06", "a clock that was wrong"});
  const Charts charts = CollectCharts(records, errList, kToday);
  EXPECT_EQ(charts.days.size(), 39);
  EXPECT_EQ(charts.days.front().day, base::Day{kYear / 9 / 28});
  EXPECT_EQ(Counts(charts.days.back()), 11);
  ASSERT_EQ(charts.weeks.size(), 26);
  EXPECT_EQ(charts.weeks.front().right, 1);
  EXPECT_EQ(Counts(charts.weeks.back()), 14);
  std::string errors;
  for (const auto& each : charts.errors) errors += each.outline + std::to_string(each.count) + " ";
  EXPECT_EQ(errors, "第三人稱單數2 XX011 ");
  EXPECT_EQ(charts.runOfDays, 1);
}

TEST_F(ChartsTest, ARunOfDaysEndsTodayOrYesterday) {
  const struct {
    std::vector<const char*> days;
    int run;
  } kCases[] = {
      {{}, 0},
      {{"2026-11-05"}, 1},
      {{"2026-11-05", "2026-11-04", "2026-11-02"}, 2},
      {{"2026-11-04", "2026-11-03", "2026-11-02", "2026-11-01", "2026-10-31"}, 5},
      {{"2026-11-03", "2026-11-02"}, 0},
      {{"2026-11-06"}, 0},
  };
  PracticeRecords practice(records);
  for (const auto& c : kCases) {
    db->RunScript("delete from oksentence; delete from errsentence");
    for (std::size_t i = 0; i < c.days.size(); ++i) {
      if (i % 2 == 0) PutOk({c.days[i], c.days[i], "a"});
      if (i % 2 == 1) PutErr({c.days[i], c.days[i], "a"});
    }
    EXPECT_EQ(practice.RunOfDays(kToday), c.run) << (c.days.empty() ? "none" : c.days.front());
  }
}

TEST_F(ChartsTest, ScalesHoldTheirCountAndHalveEvenly) {
  const std::pair<int, int> kCases[] = {{0, 4},    {4, 4},     {5, 6},       {7, 10},        {11, 20},
                                        {61, 100}, {100, 100}, {1601, 2000}, {60001, 100000}};
  for (const auto& [count, top] : kCases) EXPECT_EQ(ScaleTop(count), top) << count;
}

TEST_F(ChartsTest, DrawsWeeksWithoutSentencesAsGaps) {
  const base::Day monday{kYear / 11 / 2};
  const std::string line =
      ShareLine({{monday, 1, 1}, {monday, 0, 0}, {monday, 3, 0}, {monday, 0, 2}}).Markup();
  const auto path = line.substr(line.find("<path d='"));
  EXPECT_EQ(std::count(path.begin(), path.end(), 'M'), 2);
  EXPECT_THAT(line, HasSubstr("2026/11/2 起的一週：50%（2 句）"));
}

TEST_F(ChartsTest, NothingGivesAFriendlyPicture) {
  const auto page = [this] { return ChartsPage(CollectCharts(records, errList, kToday)).Markup(); };
  EXPECT_THAT(page(), AllOf(HasSubstr("還沒有造句記錄"), Not(HasSubstr("每日造句"))));
  PutOk({"1", "2026-11-05", "a"});
  EXPECT_THAT(page(), AllOf(HasSubstr("每日造句"), Not(HasSubstr("最常犯的錯誤"))));
}

}  // namespace

}  // namespace marovane
