#include "records/day_records.h"

#include "base/day.h"
#include "base/transaction.h"
#include "records/collect.h"
#include "records/record_db.h"

namespace marovane {

namespace {

std::vector<DayCount> CountsByDay(base::Database& db, const std::string& table) {
  return Collect(
      db, "select sDate, count(*) from " + table + " where upload <> 'D' group by sDate order by sDate", {},
      [](const base::DbRow& row) {
        return DayCount{DayFromIso(row.Text(0)), static_cast<int>(row.Number(1))};
      });
}

// Days as a JSON array: one parameter, however many there are.
std::string JsonOf(const std::vector<base::Day>& days) {
  std::string json;
  for (const auto& day : days) {
    json += json.empty() ? "[\"" : "\",\"";
    json += base::IsoDay(day);
  }
  return json.empty() ? "[]" : json + "\"]";
}

// The signs keep the database from searching by the essay: nearly all sentences are outside of any.
constexpr const char* kOutsideEssays = "(+essayId = '0' or +essayId = '')";

int CountOutsideEssays(base::Database& db, const std::string& table, base::Day day) {
  return db.Number("select count(*) from " + table + " where sDate = ? and " + kOutsideEssays,
                   {base::IsoDay(day)});
}

// Within a day they come in the order in which they were recorded.
std::vector<ListedSentence> Sentences(base::Database& db, const std::string& select,
                                      const std::vector<base::Day>& days) {
  const auto listed = [](const base::DbRow& row) { return ListedSentence{row.Text(0), row.Text(1)}; };
  const std::string order = " order by sDate, rowid";
  if (days.empty()) return Collect(db, select + kOutsideEssays + order, {}, listed);
  return Collect(db, select + kOutsideEssays + " and sDate in (select value from json_each(?))" + order,
                 {JsonOf(days)}, listed);
}

}  // namespace

void DayRecords::ClearWorkRec() { records_.Db().Run("delete from workRec where 1=1"); }

void DayRecords::InsertOkDays(const std::vector<DayCount>& days) {
  base::Database& db = records_.Db();
  base::Transaction transaction(db);
  for (const auto& [day, count] : days) {
    db.Run("insert into workRec values (?, ?, '0', 'N')", {base::IsoDay(day), std::to_string(count)});
  }
  transaction.Commit();
}

void DayRecords::MergeErrDays(const std::vector<DayCount>& days) {
  base::Database& db = records_.Db();
  base::Transaction transaction(db);
  for (const auto& [day, count] : days) {
    if (db.Number("select count(*) from workRec where sDate = ?", {base::IsoDay(day)}) > 0) {
      db.Run("update workRec set chkwrong = ? where sDate = ?", {std::to_string(count), base::IsoDay(day)});
    } else {
      db.Run("insert into workRec values (?, '0', ?, 'N')", {base::IsoDay(day), std::to_string(count)});
    }
  }
  transaction.Commit();
}

std::vector<base::Day> DayRecords::WorkRecDays() {
  return Collect(records_.Db(), "select sDate from workRec order by sDate desc", {},
                 [](const base::DbRow& row) { return DayFromIso(row.Text(0)); });
}

std::vector<DayCount> DayRecords::OkDays() { return CountsByDay(records_.Db(), "oksentence"); }

std::vector<DayCount> DayRecords::ErrDays() { return CountsByDay(records_.Db(), "errsentence"); }

int DayRecords::CountOk(base::Day day) { return CountOutsideEssays(records_.Db(), "oksentence", day); }

int DayRecords::CountErr(base::Day day) { return CountOutsideEssays(records_.Db(), "errsentence", day); }

std::vector<ListedSentence> DayRecords::OkSentences(const std::vector<base::Day>& days) {
  return Sentences(records_.Db(), "select sId, sentence from oksentence where upload <> 'D' and ", days);
}

std::vector<ListedSentence> DayRecords::ErrSentences(const std::vector<base::Day>& days) {
  return Sentences(records_.Db(), "select id, sentence from errsentence where ", days);
}

void DayRecords::DeleteDays(const std::vector<base::Day>& days) {
  base::Database& db = records_.Db();
  base::Transaction transaction(db);
  for (const auto& day : days) {
    db.Run("update oksentence set upload = 'D' where sDate = ?", {base::IsoDay(day)});
    db.Run("update errsentence set upload = 'D' where sDate = ?", {base::IsoDay(day)});
  }
  transaction.Commit();
}

void DayRecords::DeleteSentences(const std::vector<std::string>& ids) {
  base::Database& db = records_.Db();
  base::Transaction transaction(db);
  for (const auto& id : ids) {
    db.Run("update oksentence set upload = 'D' where sId = ?", {id});
    db.Run("update errsentence set upload = 'D' where id = ?", {id});
  }
  transaction.Commit();
}

}  // namespace marovane
