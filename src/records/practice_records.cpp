#include "records/practice_records.h"

#include "base/day.h"
#include "records/record_db.h"

namespace marovane {

std::vector<PracticeDay> PracticeRecords::DaysWithin(base::Day first, base::Day last) {
  std::vector<PracticeDay> days;
  records_.Db().Run(
      "select sDate, sum(isRight), sum(1 - isRight) from ("
      "select sDate, 1 as isRight from oksentence where upload <> 'D' and sDate between ?1 and ?2 union all "
      "select sDate, 0 from errsentence where upload <> 'D' and sDate between ?1 and ?2) "
      "group by sDate order by sDate",
      {base::IsoDay(first), base::IsoDay(last)}, [&](const base::DbRow& row) {
        days.push_back(
            {DayFromIso(row.Text(0)), static_cast<int>(row.Number(1)), static_cast<int>(row.Number(2))});
      });
  return days;
}

std::vector<ErrorTally> PracticeRecords::MostFrequentErrors(int limit) {
  std::vector<ErrorTally> errors;
  records_.Db().Run(
      "select errcode, count(*) from errsentence where upload <> 'D' and errcode <> '0' "
      "group by errcode order by 2 desc, 1 limit ?",
      {limit}, [&](const base::DbRow& row) {
        errors.push_back({row.Text(0), static_cast<int>(row.Number(1))});
      });
  return errors;
}

int PracticeRecords::RunOfDays(base::Day today) {
  constexpr const char* kLive = "upload <> 'D' and sDate";
  const std::string latestOk =
      std::string("(select sDate from oksentence where ") + kLive + " <= ?1 order by sDate desc limit 1)";
  const std::string latestErr =
      std::string("(select sDate from errsentence where ") + kLive + " <= ?1 order by sDate desc limit 1)";
  const std::string before = " = date(day, '-1 day'))";
  return records_.Db().Number(
      "with recursive run(day, length) as ("
      "select max(ifnull(" +
          latestOk + ", ''), ifnull(" + latestErr +
          ", '')), 1 union all "
          "select date(day, '-1 day'), length + 1 from run where "
          "exists (select 1 from oksentence where " +
          kLive + before +
          " or "
          "exists (select 1 from errsentence where " +
          kLive + before +
          ") "
          "select case when max(day) >= date(?1, '-1 day') then max(length) else 0 end from run",
      {base::IsoDay(today)});
}

}  // namespace marovane
