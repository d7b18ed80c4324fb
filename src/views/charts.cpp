#include "views/charts.h"

#include <algorithm>

#include "base/day.h"
#include "base/text.h"
#include "records/err_list_db.h"

namespace marovane {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::weeks;

bool Charts::IsEmpty() const {
  const auto hasSentences = [](const PracticeDay& entry) { return entry.right + entry.faulty > 0; };
  return errors.empty() && std::ranges::none_of(this->days, hasSentences) &&
         std::ranges::none_of(this->weeks, hasSentences);
}

std::vector<PracticeDay> Spread(const std::vector<PracticeDay>& found, base::Day first, base::Day last,
                                int stepDays) {
  std::vector<PracticeDay> rows;
  for (sys_days at = first; at <= sys_days{last}; at += days{stepDays}) rows.push_back({.day = at});
  for (const auto& entry : found) {
    const auto index = (sys_days{entry.day} - sys_days{first}).count() / stepDays;
    if (index < 0 || static_cast<std::size_t>(index) >= rows.size()) continue;
    auto& row = rows[static_cast<std::size_t>(index)];
    row.right += entry.right;
    row.faulty += entry.faulty;
  }
  return rows;
}

base::Day MondayOf(base::Day day) {
  const sys_days at{day};
  return at - (std::chrono::weekday{at} - std::chrono::Monday);
}

Charts CollectCharts(RecordDb& records, ErrListDb& errList, base::Day today) {
  constexpr int kErrors = 10;
  constexpr int kDaysOfWeek = 7;
  const base::Day firstDay = sys_days{MondayOf(today)} - weeks{5};
  const base::Day firstWeek = sys_days{MondayOf(today)} - weeks{25};
  PracticeRecords practice(records);
  Charts charts;
  charts.days = Spread(practice.DaysWithin(firstDay, today), firstDay, today, 1);
  charts.weeks = Spread(practice.DaysWithin(firstWeek, today), firstWeek, today, kDaysOfWeek);
  for (const auto& [errcode, count] : practice.MostFrequentErrors(kErrors)) {
    const std::string outline = base::Trim(errList.Outline(errcode));
    charts.errors.push_back({outline.empty() ? errcode : outline, count});
  }
  charts.runOfDays = practice.RunOfDays(today);
  return charts;
}

}  // namespace marovane
