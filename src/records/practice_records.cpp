#include "records/practice_records.h"

#include <fmt/format.h>

#include "base/day.h"
#include "records/collect.h"
#include "records/record_db.h"

namespace marovane {

std::vector<PracticeDay> PracticeRecords::DaysWithin(base::Day first, base::Day last) {
  return Collect(
      records_.Db(),
      "select sDate, sum(isRight), sum(1 - isRight) from ("
      "select sDate, 1 as isRight from oksentence where upload <> 'D' and sDate between ?1 and ?2 union all "
      "select sDate, 0 from errsentence where upload <> 'D' and sDate between ?1 and ?2) "
      "group by sDate order by sDate",
      {base::IsoDay(first), base::IsoDay(last)}, [](const base::DbRow& row) {
        return PracticeDay{DayFromIso(row.Text(0)), static_cast<int>(row.Number(1)),
                           static_cast<int>(row.Number(2))};
      });
}

std::vector<ErrorTally> PracticeRecords::MostFrequentErrors(int limit) {
  return Collect(records_.Db(),
                 "select errcode, count(*) from errsentence where upload <> 'D' and errcode <> '0' "
                 "group by errcode order by 2 desc, 1 limit ?",
                 {limit}, [](const base::DbRow& row) {
                   return ErrorTally{row.Text(0), static_cast<int>(row.Number(1))};
                 });
}

int PracticeRecords::RunOfDays(base::Day today) {
  constexpr const char* kLatest =
      "ifnull((select sDate from {} where upload <> 'D' and sDate <= ?1 order by sDate desc limit 1), '')";
  constexpr const char* kHasDayBefore =
      "exists (select 1 from {} where upload <> 'D' and sDate = date(day, '-1 day'))";
  return records_.Db().Number(
      fmt::format("with recursive run(day, length) as (select max({}, {}), 1 union all "
                  "select date(day, '-1 day'), length + 1 from run where {} or {}) "
                  "select case when max(day) >= date(?1, '-1 day') then max(length) else 0 end from run",
                  fmt::format(kLatest, "oksentence"), fmt::format(kLatest, "errsentence"),
                  fmt::format(kHasDayBefore, "oksentence"), fmt::format(kHasDayBefore, "errsentence")),
      {base::IsoDay(today)});
}

}  // namespace marovane
