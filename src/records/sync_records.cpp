#include "records/sync_records.h"

#include <fmt/format.h>

#include <array>

#include "base/database.h"
#include "base/day.h"
#include "base/digest.h"
#include "base/text.h"
#include "base/transaction.h"
#include "records/record_db.h"

namespace marovane {

namespace {

struct TableWords {
  const char* name;
  const char* key;
  const char* newest;   // column that tells the newest row
  const char* pending;  // columns of a PendingRow
  const char* digest;   // columns in the server's order
};

const TableWords& WordsOf(RecordTable table) {
  static constexpr std::array<TableWords, 3> kWords{
      {{"oksentence", "sId", "sentence",
        "sId, upload, '', sentence, sDate, essayId, essaySId, haveHtm, '', '', ''",
        "'', sentence, sDate, essayId, essaySId, haveHtm"},
       {"errsentence", "id", "sentence",
        "id, upload, errcode, sentence, sDate, essayId, essaySId, haveHtm, '', '', ''",
        "errcode, sentence, sDate, essayId, essaySId, haveHtm"},
       {"essay", "essayId", "essayId",
        "essayId, upload, 'essay', finalSet, sDate, essayId, workId, '', quiz, orgEssay, newEssay",
        "sDate, essayId, workId, finalSet, quiz, orgEssay, newEssay"}}};
  return kWords[static_cast<std::size_t>(table)];
}

constexpr std::array kAllTables{RecordTable::kOkSentence, RecordTable::kErrSentence, RecordTable::kEssay};

PendingRow RowFrom(const base::DbRow& row) {
  return {row.Text(0), row.Text(1), row.Text(2), row.Text(3), row.Text(4), row.Text(5),
          row.Text(6), row.Text(7), row.Text(8), row.Text(9), row.Text(10)};
}

}  // namespace

base::Database& SyncRecords::Db() { return records_.Db(); }

int SyncRecords::CountPending(RecordTable table) {
  return Db().Number(
      fmt::format("select count(*) from {} where upload = 'N' or upload = 'D'", WordsOf(table).name));
}

bool SyncRecords::HasPending() {
  return CountPending(RecordTable::kEssay) > 0 || CountPending(RecordTable::kOkSentence) > 0 ||
         CountPending(RecordTable::kErrSentence) > 0;
}

std::vector<PendingRow> SyncRecords::Pending(RecordTable table) {
  const auto& words = WordsOf(table);
  std::vector<PendingRow> rows;
  Db().Run(fmt::format("select {} from {} where upload = 'N' or upload = 'D' order by {}, rowid",
                       words.pending, words.name, words.key),
           {}, [&](const base::DbRow& row) { rows.push_back(RowFrom(row)); });
  return rows;
}

int SyncRecords::CountUploadedLike(RecordTable table, const PendingRow& row) {
  if (table == RecordTable::kEssay) return 0;
  std::string sql = fmt::format(
      "select count(*) from {} where upload = 'Y' and sentence = ? and sDate = ? and essayId = ?"
      " and essaySId = ? and haveHtm = ?",
      WordsOf(table).name);
  std::vector<base::DbValue> parameters{row.text, row.sDate, row.essayId, row.subId, row.haveHtm};
  if (table == RecordTable::kErrSentence) {
    sql += " and errcode = ?";
    parameters.emplace_back(row.err);
  }
  return Db().Number(sql, parameters);
}

bool SyncRecords::WasNeverSent(const PendingRow& row) {
  return Db().Number("select count(*) from never_sent where id = ?", {row.id}) > 0;
}

void SyncRecords::Settle(RecordTable table, const std::vector<std::string>& newIds,
                         const std::vector<std::string>& deletedIds) {
  const auto& words = WordsOf(table);
  base::Transaction transaction(Db());
  // The plus sign keeps the index of the flags out of it: nearly all rows have this flag now.
  for (const auto& id : newIds) {
    Db().Run(fmt::format("update {} set upload = 'Y' where {} = ? and +upload = 'N'", words.name, words.key),
             {id});
    // One that was deleted while it was on its way has been sent all the same.
    Db().Run("delete from never_sent where id = ?", {id});
  }
  for (const auto& id : deletedIds) {
    Db().Run(fmt::format("delete from {} where {} = ? and +upload = 'D'", words.name, words.key), {id});
    Db().Run("delete from never_sent where id = ?", {id});
  }
  transaction.Commit();
}

std::string SyncRecords::Newest(RecordTable table) {
  const auto& words = WordsOf(table);
  return Db()
      .Text(fmt::format("select {} from {} order by {} desc limit 1", words.newest, words.name, words.key))
      .value_or("");
}

std::uint64_t SyncRecords::Digest(base::Day from) {
  std::uint64_t sum = 0;
  for (const RecordTable table : kAllTables) {
    const auto& words = WordsOf(table);
    Db().Run(fmt::format("select {} from {} where sDate >= ?", words.digest, words.name),
             {base::IsoDay(from)}, [&](const base::DbRow& row) {
               base::RowHash hash;
               for (int i = 0; i < row.Count(); ++i) hash.Add(base::Trim(row.Text(i)));
               sum += hash.Value();
             });
  }
  return sum;
}

void SyncRecords::BeginReload() {
  for (const RecordTable table : kAllTables) {
    const char* const name = WordsOf(table).name;
    Db().Run(
        fmt::format("create temp table if not exists fresh_{0} as select * from main.{0} where 0", name));
    Db().Run(fmt::format("delete from temp.fresh_{}", name));
  }
}

void SyncRecords::AddToReload(RecordTable table, const std::vector<std::vector<std::string>>& rows) {
  const std::string sql =
      fmt::format("insert into temp.fresh_{} values (?, ?, ?, ?, ?, ?, ?, ?)", WordsOf(table).name);
  base::Transaction transaction(Db());
  std::vector<base::DbValue> values;
  for (const auto& columns : rows) {
    values.clear();
    for (const auto& column : columns) values.emplace_back(StoredText(column));
    Db().Run(sql, values);
  }
  transaction.Commit();
}

bool SyncRecords::CommitReload() {
  base::Transaction transaction(Db());
  if (HasPending()) return false;
  for (const RecordTable table : kAllTables) {
    const char* const name = WordsOf(table).name;
    Db().Run(fmt::format("delete from {} where 1=1", name));
    Db().Run(fmt::format("insert into {0} select * from temp.fresh_{0} order by rowid", name));
    Db().Run(fmt::format("delete from temp.fresh_{}", name));
  }
  transaction.Commit();
  return true;
}

}  // namespace marovane
