#include "records/age_cleaning.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <memory>

#include "base/day.h"
#include "base/files.h"
#include "base/transaction.h"
#include "core/program.h"
#include "platform/machine.h"
#include "records/connection.h"
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

int Count(base::Database& db, const std::string& sql, const std::vector<base::DbValue>& parameters = {}) {
  return db.Number("select count(*) from " + sql, parameters);
}

bool HasRowsBefore(base::Database& db, const std::string& day) {
  for (const auto& table : kKeptTables) {
    if (Count(db, std::string(table.name) + " where sDate < ?", {day}) > 0) return true;
  }
  return false;
}

}  // namespace

void AgeCleaning::RemoveBefore(base::Day day) {
  base::Database& db = records_.Db();
  if (HasRowsBefore(db, base::IsoDay(day))) Archive(day);
  base::Transaction transaction(db);
  for (const char* table : {"workRec", "oksentence", "errsentence", "essay"}) {
    db.Run(std::string("delete from ") + table + " where sDate < ?", {base::IsoDay(day)});
  }
  transaction.Commit();
}

// The archive has its own transaction, which ends first: a crash at any point leaves a row in one of the two
// files at least. What an earlier crash has left in both is not appended twice.
void AgeCleaning::Archive(base::Day day) {
  const std::filesystem::path source = ConnectionPath(program_.app.gConnRecords);
  const auto archive =
      program_.machine.databases.Open(source.parent_path() / "archive.mdb", base::Databases::Mode::kMayBeNew);
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

int AgeCleaning::CountOkSentences() { return Count(records_.Db(), "oksentence"); }

int AgeCleaning::CountErrSentences() { return Count(records_.Db(), "errsentence"); }

bool AgeCleaning::HasNewRows() {
  for (const auto& table : kKeptTables) {
    if (Count(records_.Db(), std::string(table.name) + " where upload = 'N'") > 0) return true;
  }
  return false;
}

}  // namespace marovane
