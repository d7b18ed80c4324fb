#include "records/age_cleaning.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "base/day.h"
#include "base/files.h"
#include "base/transaction.h"
#include "core/program.h"
#include "platform/machine.h"
#include "records/record_db.h"

namespace marovane {

namespace {

struct KeptTable {
  const char* name;
  const char* key;
};
// The list of days is left out: it is made from these.
constexpr std::array<KeptTable, 3> kKeptTables{
    {{"oksentence", "sId"}, {"errsentence", "id"}, {"essay", "essayId"}}};

bool HasRowsBefore(base::Database& db, base::Day day) {
  return std::ranges::any_of(kKeptTables, [&](const KeptTable& table) {
    return db.Number(fmt::format("select count(*) from {} where sDate < ?", table.name),
                     {base::IsoDay(day)}) > 0;
  });
}

// The archive has its own transaction, which ends first: a crash at any point leaves a row in one of the two
// files at least. What an earlier crash has left in both is not appended twice.
void Archive(Program& program, base::Day day) {
  const std::filesystem::path source = ConnectionPath(program.app.gConnRecords);
  const auto archive =
      program.machine.databases.Open(source.parent_path() / "archive.mdb", base::Databases::Mode::kMayBeNew);
  archive->Run("attach database ? as records", {source.string()});
  base::Transaction transaction(*archive);
  for (const auto& [table, key] : kKeptTables) {
    archive->Run(
        fmt::format("create table if not exists main.{0} as select * from records.{0} where 0", table));
    archive->Run(fmt::format("insert into main.{0} select * from records.{0} where sDate < ? and {1} not in "
                             "(select {1} from main.{0})",
                             table, key),
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
