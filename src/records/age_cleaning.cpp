#include "records/age_cleaning.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/day.h"
#include "base/files.h"
#include "base/text.h"
#include "base/transaction.h"
#include "core/program.h"
#include "platform/machine.h"
#include "records/record_db.h"

namespace marovane {

namespace {

struct KeptTable {
  const char* name;
  const char* same;  // what two equal rows have in common
};
// The list of days is left out: it is made from these.
constexpr std::array<KeptTable, 3> kKeptTables{
    {{"oksentence", "sentence, sDate, essayId, essaySId, haveHtm"},
     {"errsentence", "sentence, sDate, errcode, essayId, essaySId, haveHtm"},
     {"essay", "orgEssay, sDate, essayId, workId"}}};

// "sentence, sDate" as "old.sentence, old.sDate".
std::string Of(const std::string& table, const std::string& columns) {
  return table + "." + base::Replace(columns, ", ", ", " + table + ".");
}

bool HasRowsBefore(base::Database& db, base::Day day) {
  return std::ranges::any_of(kKeptTables, [&](const KeptTable& table) {
    return db.Number(fmt::format("select count(*) from {} where sDate < ?", table.name),
                     {base::IsoDay(day)}) > 0;
  });
}

// The archive has its own transaction, which ends first: a crash at any point leaves a row in one of the two
// files at least. What an earlier crash has left in both, or a reload has brought back, is not appended
// twice: of equal rows only those that are more than the archive has.
void Archive(Program& program, base::Day day) {
  const std::filesystem::path source = ConnectionPath(program.app.gConnRecords);
  const auto archive =
      program.machine.databases.Open(source.parent_path() / "archive.mdb", base::Databases::Mode::kMayBeNew);
  archive->Run("attach database ? as records", {source.string()});
  base::Transaction transaction(*archive);
  for (const auto& [table, same] : kKeptTables) {
    archive->Run(
        fmt::format("create table if not exists main.{0} as select * from records.{0} where 0", table));
    archive->Run(fmt::format("create index if not exists main.{0}_same on {0} ({1})", table, same));
    archive->Run(
        fmt::format(
            "insert into main.{0} select * from records.{0} where rowid in (select number from"
            " (select rowid as number, row_number() over (partition by {1} order by rowid) as nth, {1}"
            " from records.{0} where sDate < ?) as old where nth > (select count(*) from main.{0} as kept"
            " where ({2}) = ({3})))",
            table, same, Of("kept", same), Of("old", same)),
        {base::IsoDay(day)});
  }
  transaction.Commit();
}

}  // namespace

void RemoveRecordsBefore(Program& program, RecordDb& records, base::Day day) {
  base::Database& db = records.Db();
  if (HasRowsBefore(db, day)) Archive(program, day);
  base::Transaction transaction(db);
  for (const char* table : {"workRec", "oksentence", "errsentence", "essay"}) {
    db.Run(fmt::format("delete from {} where sDate < ?", table), {base::IsoDay(day)});
  }
  transaction.Commit();
}

}  // namespace marovane
