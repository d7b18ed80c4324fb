#include "records/sync_records.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/day.h"
#include "base/transaction.h"
#include "protocol/digest.h"

namespace marovane {

using protocol::RecordKind;

namespace {

struct TableWords {
  const char* name;
  const char* key;
  const char* newest;   // column that identifies the newest row
  const char* columns;  // in the order of a row's fields
  const char* values;   // of the table, from the local key and a row's fields
};

const TableWords& WordsOf(RecordKind kind) {
  static constexpr std::array<TableWords, 3> kWords{
      {{"oksentence", "sId", "sentence", "'', sentence, sDate, essayId, essaySId, haveHtm",
        "?1, 'N', ?3, ?4, 'Y', ?5, ?6, ?7"},
       {"errsentence", "id", "sentence", "errcode, sentence, sDate, essayId, essaySId, haveHtm",
        "?1, ?3, ?2, ?4, 'Y', ?5, ?6, ?7"},
       {"essay", "essayId", "essayId", "sDate, essayId, workId, finalSet, quiz, orgEssay, newEssay",
        "?3, ?4, ?6, ?7, ?8, 'Y', ?5, ?2"}}};
  return kWords[static_cast<std::size_t>(kind)];
}

constexpr std::array kAllKinds{RecordKind::kRight, RecordKind::kFaulty, RecordKind::kEssay};

}  // namespace

int SyncRecords::CountPending(RecordKind kind) {
  return Db().Number(
      fmt::format("select count(*) from {} where upload = 'N' or upload = 'D'", WordsOf(kind).name));
}

bool SyncRecords::HasPending() {
  return std::ranges::any_of(kAllKinds, [this](RecordKind kind) { return CountPending(kind) > 0; });
}

PendingRows SyncRecords::Pending(RecordKind kind) {
  const auto& words = WordsOf(kind);
  PendingRows pending;
  Db().Run(
      fmt::format("select {}, upload, {} from {} where upload = 'N' or upload = 'D' order by {}, rowid",
                  words.key, words.columns, words.name, words.key),
      {}, [&](const base::DbRow& row) {
        auto fields = row.Texts();
        pending.ids.push_back(fields[0]);
        pending.rows.push_back({fields[1] == "D", protocol::RowFrom(kind, std::span(fields).subspan(2)), 0});
      });
  return pending;
}

int SyncRecords::CountUploadedLike(RecordKind kind, const protocol::Row& row) {
  const auto* sentence = std::get_if<protocol::SentenceRow>(&row);
  if (sentence == nullptr) return 0;
  std::string sql = fmt::format(
      "select count(*) from {} where upload = 'Y' and sentence = ? and sDate = ? and essayId = ?"
      " and essaySId = ? and haveHtm = ?",
      WordsOf(kind).name);
  std::vector<base::DbValue> parameters{sentence->sentence, sentence->day, sentence->essayId,
                                        sentence->essaySId, sentence->haveHtm};
  if (kind == RecordKind::kFaulty) {
    sql += " and errcode = ?";
    parameters.emplace_back(sentence->errcode);
  }
  return Db().Number(sql, parameters);
}

bool SyncRecords::WasNeverSent(const std::string& id) {
  return Db().Number("select count(*) from never_sent where id = ?", {id}) > 0;
}

void SyncRecords::MarkSent(RecordKind kind, const std::vector<std::string>& newIds,
                           const std::vector<std::string>& deletedIds) {
  const auto& words = WordsOf(kind);
  base::Transaction transaction(Db());
  // A new row that was deleted while it was on its way has been sent all the same.
  const auto runForEach = [&](const std::vector<std::string>& ids, const std::string& sql) {
    for (const auto& id : ids) {
      Db().Run(sql, {id});
      Db().Run("delete from never_sent where id = ?", {id});
    }
  };
  // The plus signs keep the index of the flags out of it: nearly all rows have the flag now.
  runForEach(newIds,
             fmt::format("update {} set upload = 'Y' where {} = ? and +upload = 'N'", words.name, words.key));
  runForEach(deletedIds, fmt::format("delete from {} where {} = ? and +upload = 'D'", words.name, words.key));
  transaction.Commit();
}

std::string SyncRecords::Newest(RecordKind kind) {
  const auto& words = WordsOf(kind);
  return Db()
      .Text(fmt::format("select {} from {} order by {} desc limit 1", words.newest, words.name, words.key))
      .value_or("");
}

std::uint64_t SyncRecords::Digest(base::Day from) {
  std::uint64_t sum = 0;
  for (const RecordKind kind : kAllKinds) {
    const auto& words = WordsOf(kind);
    Db().Run(fmt::format("select {} from {} where sDate >= ?", words.columns, words.name),
             {base::IsoDay(from)}, [&](const base::DbRow& row) { sum += protocol::HashOf(row); });
  }
  return sum;
}

void SyncRecords::BeginReload() {
  for (const RecordKind kind : kAllKinds) {
    const char* const name = WordsOf(kind).name;
    Db().Run(
        fmt::format("create temp table if not exists fresh_{0} as select * from main.{0} where 0", name));
    Db().Run(fmt::format("delete from temp.fresh_{}", name));
  }
}

void SyncRecords::AddToReload(RecordKind kind, const std::vector<std::string>& ids,
                              const std::vector<protocol::Row>& rows) {
  const auto& words = WordsOf(kind);
  const std::string sql = fmt::format("insert into temp.fresh_{} values ({})", words.name, words.values);
  base::Transaction transaction(Db());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::vector<base::DbValue> values{ids[i]};
    for (const auto field : protocol::FieldsOf(rows[i])) values.emplace_back(StoredText(std::string(field)));
    Db().Run(sql, values);
  }
  transaction.Commit();
}

bool SyncRecords::CommitReload() {
  base::Transaction transaction(Db());
  if (HasPending()) return false;
  for (const RecordKind kind : kAllKinds) {
    const char* const name = WordsOf(kind).name;
    Db().Run(fmt::format("delete from {} where 1=1", name));
    Db().Run(fmt::format("insert into {0} select * from temp.fresh_{0} order by rowid", name));
    Db().Run(fmt::format("delete from temp.fresh_{}", name));
  }
  transaction.Commit();
  return true;
}

}  // namespace marovane
