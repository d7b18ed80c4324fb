#include "records/sync_records.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <map>

#include "base/day.h"
#include "base/digest.h"
#include "base/text.h"
#include "base/transaction.h"
#include "protocol/digest.h"
#include "protocol/unique_id.h"

namespace marovane {

using protocol::RecordKind;

namespace {

struct TableWords {
  const char* name;
  const char* key;
  const char* newest;   // column that identifies the newest row
  const char* columns;  // in the order of a row's fields
  const char* digest;   // what the server has too
  const char* same;     // what two equal rows have in common
  const char* values;   // of the table, from the local key and a row's fields
};

const TableWords& WordsOf(RecordKind kind) {
  static constexpr std::array<TableWords, 3> kWords{
      {{"oksentence", "sId", "sentence", "'', sentence, sDate, essayId, essaySId, haveHtm",
        "'', sentence, sDate, essayId, essaySId, haveHtm, sId", "sentence, sDate, essayId, essaySId, haveHtm",
        "?1, 'N', ?3, ?4, 'Y', ?5, ?6, ?7"},
       {"errsentence", "id", "sentence", "errcode, sentence, sDate, essayId, essaySId, haveHtm",
        "errcode, sentence, sDate, essayId, essaySId, haveHtm, id",
        "errcode, sentence, sDate, essayId, essaySId, haveHtm", "?1, ?3, ?2, ?4, 'Y', ?5, ?6, ?7"},
       {"essay", "essayId", "essayId", "sDate, essayId, workId, finalSet, quiz, orgEssay, newEssay",
        "sDate, essayId, workId, finalSet, quiz, orgEssay, newEssay", "sDate, essayId, workId, orgEssay",
        "?3, ?4, ?6, ?7, ?8, 'Y', ?5, ?2"}}};
  return kWords[static_cast<std::size_t>(kind)];
}

// Ids by which a server knows a row; other keys are this computer's alone (protocol/unique_id.h).
std::string HasId(const TableWords& words) { return fmt::format("length({}) = 25", words.key); }

constexpr std::array kAllKinds{RecordKind::kRight, RecordKind::kFaulty, RecordKind::kEssay};

// Rows that are long gone are told with the right sentences: of them the id alone is left.
bool TellsGone(RecordKind kind) { return kind == RecordKind::kRight; }

protocol::PostedRow IdAlone(const std::string& id) {
  return {.isDeletion = true, .id = id, .row = protocol::SentenceRow{}};
}

// "trim(errcode) as errcode, …": blanks around a text do not count where texts go over a server.
std::string Trimmed(const TableWords& words) {
  std::vector<std::string> columns = base::Split(words.same, ", ");
  for (auto& column : columns) column = fmt::format("trim({0}) as {0}", column);
  return fmt::format("{}", fmt::join(columns, ", "));
}

// Numbers (rowid) of the rows with the flag 'Y' that the fresh set lacks. A row is there when its id is, and
// else when an equal one is there that is no other row of this computer: of equal rows each counts once. A
// row with an id was sent with it, so its equal can only be one that a server without ids has taken, which
// has made one since (8…); what other computers have sent says the same and is not the same.
std::string LostRows(const TableWords& words, const ReloadRules& rules) {
  std::string own =
      fmt::format("select rowid as number, {} as key, {} as hasId, {} from main.{} where upload = 'Y'",
                  words.key, rules.hasIds ? HasId(words) : "0", Trimmed(words), words.name);
  std::string others =
      fmt::format("select {0}, length({1}) <> 25 or {1} like '8%' as isMade from temp.fresh_{2}",
                  Trimmed(words), words.key, words.name);
  if (rules.hasIds) {
    own +=
        fmt::format(" and {0} not in (select {0} from temp.fresh_{1}) and {0} not in (select id from gone)",
                    words.key, words.name);
    others +=
        fmt::format(" where {0} not in (select {0} from main.{1} where upload = 'Y')", words.key, words.name);
  }
  return fmt::format(
      "select number from (select *, row_number() over (partition by {0}, hasId order by key, number) as nth,"
      " sum(hasId) over (partition by {0}) as known from ({1}))"
      " left join (select {0}, count(*) as many, sum(isMade) as made from ({2}) group by {0}) using ({0})"
      " where nth > iif(hasId, ifnull(made, 0), ifnull(many - min(known, made), 0))",
      words.same, own, others);
}

}  // namespace

int SyncRecords::CountPending(RecordKind kind) {
  const int there = Db().Number(
      fmt::format("select count(*) from {} where upload = 'N' or upload = 'D'", WordsOf(kind).name));
  return TellsGone(kind) ? there + Db().Number("select count(*) from gone where upload = 'N'") : there;
}

bool SyncRecords::HasPending() {
  return std::ranges::any_of(kAllKinds, [this](RecordKind kind) { return CountPending(kind) > 0; });
}

bool SyncRecords::IsAllSent() { return !HasPending() && CountRefused() == 0; }

int SyncRecords::CountRefused() {
  int rows = 0;
  for (const RecordKind kind : kAllKinds) {
    rows += Db().Number(fmt::format("select count(*) from {} where upload = 'R'", WordsOf(kind).name));
  }
  return rows;
}

int SyncRecords::OfferRefusedAgain() {
  const int rows = CountRefused();
  if (rows == 0) return 0;
  base::Transaction transaction(Db());
  for (const RecordKind kind : kAllKinds) {
    Db().Run(fmt::format("update {} set upload = 'N' where upload = 'R'", WordsOf(kind).name));
  }
  transaction.Commit();
  return rows;
}

RecordCounts SyncRecords::Count() {
  const auto count = [this](RecordKind kind) {
    return Db().Number(fmt::format("select count(*) from {} where upload <> 'D'", WordsOf(kind).name));
  };
  return {.sentences = count(RecordKind::kRight) + count(RecordKind::kFaulty),
          .essays = count(RecordKind::kEssay)};
}

// What was deleted before any server knew it says nothing but its id: an equal sentence that a server has is
// another row.
PendingRows SyncRecords::Pending(RecordKind kind) {
  const auto& words = WordsOf(kind);
  PendingRows pending;
  Db().Run(fmt::format("select {0}, upload, {0} in (select id from never_sent), {1} from {2}"
                       " where upload = 'N' or upload = 'D' order by {0}, rowid",
                       words.key, words.columns, words.name),
           {}, [&](const base::DbRow& row) {
             auto fields = row.Texts();
             const bool isDeletion = fields[1] == "D";
             const std::string id = protocol::IsUniqueId(fields[0]) ? fields[0] : "";
             const bool isIdAlone = isDeletion && fields[2] == "1" && !id.empty();
             pending.ids.push_back(fields[0]);
             pending.rows.push_back(
                 isIdAlone ? IdAlone(id)
                           : protocol::PostedRow{isDeletion, id,
                                                 protocol::RowFrom(kind, std::span(fields).subspan(3))});
           });
  if (!TellsGone(kind)) return pending;
  for (const auto& id : Db().Column("select id from gone where upload = 'N'")) {
    pending.ids.push_back(id);
    pending.rows.push_back(IdAlone(id));
  }
  return pending;
}

void SyncRecords::MarkSent(RecordKind kind, const std::vector<std::string>& newIds,
                           const std::vector<std::string>& deletedIds) {
  constexpr std::size_t kOlderId = 14;
  const auto& words = WordsOf(kind);
  base::Transaction transaction(Db());
  // The plus signs keep the index of the flags out of it: nearly all rows have the flag now.
  for (const auto& id : newIds) {
    Db().Run(fmt::format("update {} set upload = 'Y' where {} = ? and +upload = 'N'", words.name, words.key),
             {id});
    Db().Run("delete from never_sent where id = ?", {id});
    if (id.size() != kOlderId) continue;
    // The new version has made it longer.
    Db().Run(fmt::format("update {0} set upload = 'Y' where {1} glob ? and {2} and +upload = 'N'", words.name,
                         words.key, HasId(words)),
             {id + "*"});
  }
  for (const auto& id : deletedIds) {
    Db().Run(fmt::format("delete from {} where {} = ? and +upload = 'D'", words.name, words.key), {id});
    Db().Run("delete from never_sent where id = ?", {id});
    if (protocol::IsUniqueId(id)) Db().Run("insert or replace into gone values (?, 'Y')", {id});
  }
  transaction.Commit();
}

void SyncRecords::MarkUnsent(RecordKind kind, const std::vector<std::string>& newIds,
                             const std::vector<std::string>& deletedIds) {
  TakeSentBack(kind, newIds, deletedIds, "N");
}

void SyncRecords::MarkRefused(RecordKind kind, const std::vector<std::string>& newIds,
                              const std::vector<std::string>& deletedIds) {
  TakeSentBack(kind, newIds, deletedIds, "R");
}

void SyncRecords::TakeSentBack(RecordKind kind, const std::vector<std::string>& newIds,
                               const std::vector<std::string>& deletedIds, const char* flag) {
  const auto& words = WordsOf(kind);
  base::Transaction transaction(Db());
  for (const auto& id : newIds) {
    Db().Run(fmt::format("update {} set upload = ? where {} = ? and +upload = 'Y'", words.name, words.key),
             {flag, id});
  }
  for (const auto& id : deletedIds) Db().Run("update gone set upload = ? where id = ?", {flag, id});
  transaction.Commit();
}

void SyncRecords::MarkOneUnsent(RecordKind kind, const protocol::Row& row) {
  const auto& words = WordsOf(kind);
  std::vector<base::DbValue> fields;
  for (const auto field : protocol::FieldsOf(row))
    fields.emplace_back(base::Trim(StoredText(std::string(field))));
  std::vector<std::string> conditions;
  for (const auto& column : base::Split(words.columns, ", "))
    conditions.push_back("trim(" + column + ") = ?");
  Db().Run(fmt::format("update {0} set upload = 'N' where rowid = (select rowid from {0}"
                       " where upload = 'Y' and {1} limit 1)",
                       words.name, fmt::join(conditions, " and ")),
           fields);
}

Belongs SyncRecords::BelongsTo() {
  Belongs belongs;
  Db().Run("select account, server, seen, isBehind from belongs", {}, [&belongs](const base::DbRow& row) {
    belongs = {row.Text(0), row.Text(1), row.Text(2), row.Text(3) == "Y"};
  });
  return belongs;
}

void SyncRecords::SetBelongsTo(const Belongs& belongs) {
  if (belongs == BelongsTo()) return;
  Db().Run("insert or replace into belongs values (1, ?, ?, ?, ?)",
           {belongs.account, belongs.server, belongs.seen, belongs.isBehind ? "Y" : "N"});
}

void SyncRecords::NoteSeen(const std::string& post) { Db().Run("update belongs set seen = ?", {post}); }

bool SyncRecords::HasSent() {
  return Db().Number("select count(*) from gone where upload <> 'N'") > 0 ||
         std::ranges::any_of(kAllKinds, [this](RecordKind kind) {
           return Db().Number(
                      fmt::format("select exists (select 1 from {} where upload = 'Y' or upload = 'R')",
                                  WordsOf(kind).name)) > 0;
         });
}

void SyncRecords::RepeatTo(const Belongs& belongs) {
  base::Transaction transaction(Db());
  for (const RecordKind kind : kAllKinds) {
    Db().Run(fmt::format("update {} set upload = 'N' where upload = 'R'", WordsOf(kind).name));
  }
  Db().Run("update essay set upload = 'N' where upload = 'Y'");
  Db().Run("update gone set upload = 'N'");
  SetBelongsTo(belongs);
  transaction.Commit();
}

std::string SyncRecords::Newest(RecordKind kind) {
  const auto& words = WordsOf(kind);
  return Db()
      .Text(fmt::format("select {} from {} where +upload <> 'R' order by {} desc limit 1", words.newest,
                        words.name, words.key))
      .value_or("");
}

std::uint64_t SyncRecords::Digest(base::Day from) {
  std::uint64_t sum = 0;
  for (const RecordKind kind : kAllKinds) {
    const auto& words = WordsOf(kind);
    Db().Run(fmt::format("select {} from {} where sDate >= ? and +upload <> 'R'", words.digest, words.name),
             {base::IsoDay(from)}, [&](const base::DbRow& row) { sum += protocol::HashOf(row); });
  }
  return sum;
}

void SyncRecords::BeginReload() {
  for (const RecordKind kind : kAllKinds) {
    const char* const name = WordsOf(kind).name;
    Db().Run(
        fmt::format("create temp table if not exists fresh_{0} as select * from main.{0} where 0", name));
    Db().Run(fmt::format("create index if not exists temp.fresh_{0}_key on fresh_{0} ({1})", name,
                         WordsOf(kind).key));
    Db().Run(fmt::format("delete from temp.fresh_{}", name));
  }
  Db().Run("create temp table if not exists fresh_gone (id text primary key) without rowid");
  Db().Run("delete from temp.fresh_gone");
}

void SyncRecords::AddToReload(RecordKind kind, const std::vector<protocol::StreamRow>& rows) {
  const auto& words = WordsOf(kind);
  const std::string sql = fmt::format("insert into temp.fresh_{} values ({})", words.name, words.values);
  base::Transaction transaction(Db());
  for (const auto& [row, id] : rows) {
    std::vector<base::DbValue> values{id};
    for (const auto field : protocol::FieldsOf(row)) values.emplace_back(StoredText(std::string(field)));
    Db().Run(sql, values);
  }
  transaction.Commit();
}

void SyncRecords::AddGone(const std::vector<std::string>& ids) {
  base::Transaction transaction(Db());
  for (const auto& id : ids) Db().Run("insert or ignore into temp.fresh_gone values (?)", {id});
  transaction.Commit();
}

int SyncRecords::CountTakenAway(const ReloadRules& rules) {
  if (rules.isBehind) return 0;  // they are sent again
  int taken = 0;
  base::Transaction asItWillBe(Db());  // and is undone
  if (rules.hasIds) FollowGone();
  for (const RecordKind kind : kAllKinds) {
    const auto& words = WordsOf(kind);
    const std::string condition = rules.hasIds ? "not " + HasId(words) : "1";
    const std::string own = fmt::format("from {} where upload = 'Y' and {}", words.name, condition);
    if (Db().Number("select exists (select 1 " + own + ")") == 0) continue;
    taken += Db().Number(fmt::format("select count(*) {} and rowid in ({})", own, LostRows(words, rules)));
  }
  return taken;
}

bool SyncRecords::CommitReload(const ReloadRules& rules) {
  base::Transaction transaction(Db());
  if (HasPending()) return false;
  if (rules.hasIds) FollowGone();
  KeepFurtherEssays();
  DropRefusedThatAreThere();
  for (const RecordKind kind : kAllKinds) {
    if (rules.hasIds || rules.isBehind) KeepLost(kind, rules);
    Replace(kind);
  }
  transaction.Commit();
  return true;
}

// What was deleted, here or elsewhere, is not in the fresh set. What the server still has of it, though this
// computer has told it, is told once more.
void SyncRecords::FollowGone() {
  for (const RecordKind kind : kAllKinds) {
    const auto& words = WordsOf(kind);
    Db().Run(fmt::format("delete from temp.fresh_{} where {} in (select id from temp.fresh_gone)", words.name,
                         words.key));
    Db().Run(
        fmt::format("update gone set upload = 'N' where upload = 'Y'"
                    " and exists (select 1 from temp.fresh_{0} where {1} = gone.id)",
                    words.name, words.key));
    Db().Run(
        fmt::format("delete from temp.fresh_{} where {} in (select id from gone)", words.name, words.key));
  }
  Db().Run("insert or ignore into gone select id, 'Y' from temp.fresh_gone");
}

// Both sides begin with the same rows, in most cases with nearly all of them: these stay where they are.
void SyncRecords::Replace(RecordKind kind) {
  const auto& words = WordsOf(kind);
  Db().Run(fmt::format("delete from {} where +upload = 'Y' and {} in (select id from gone)", words.name,
                       words.key));
  const std::int64_t kept = CountSameBeginning(kind);
  Db().Run(fmt::format("delete from {0} where rowid in (select rowid from {0} where +upload = 'Y'"
                       " order by rowid limit -1 offset ?)",
                       words.name),
           {kept});
  Db().Run(fmt::format("insert into {0} select * from temp.fresh_{0} order by rowid limit -1 offset ?",
                       words.name),
           {kept});
  Db().Run(fmt::format("delete from temp.fresh_{}", words.name));
}

// How many rows with the flag 'Y' are, in their order, the same as the first of the fresh set.
std::int64_t SyncRecords::CountSameBeginning(RecordKind kind) {
  const auto& words = WordsOf(kind);
  std::vector<std::string> equal;
  for (const auto& column : Db().Column("select name from pragma_table_info(?)", {words.name})) {
    equal.push_back(fmt::format("fresh.{0} = own.{0}", column));
  }
  std::vector<std::int64_t> fresh;
  Db().Run(fmt::format("select rowid from temp.fresh_{} order by rowid", words.name), {},
           [&fresh](const base::DbRow& row) { fresh.push_back(row.Number(0)); });
  std::size_t same = 0;
  bool isSame = true;
  std::int64_t latest = 0;
  Db().Run(fmt::format("select own.rowid, fresh.rowid from main.{0} as own left join temp.fresh_{0} as fresh"
                       " on {1} where +own.upload = 'Y' order by own.rowid",
                       words.name, fmt::join(equal, " and ")),
           {}, [&](const base::DbRow& row) {
             // A row of which the fresh set has several comes several times.
             isSame =
                 isSame && row.Number(0) != latest && same < fresh.size() && row.Number(1) == fresh[same];
             latest = row.Number(0);
             if (isSame) ++same;
           });
  return static_cast<std::int64_t>(same);
}

// An essay goes from begun ('A') over finished ('N') to handed in ('Y') and never back. A server that is less
// far has not got, or has lost, what came last.
void SyncRecords::KeepFurtherEssays() {
  constexpr const char* kFurther =
      "from main.essay as own join temp.fresh_essay as fresh using (essayId, workId, sDate)"
      " where instr('ANY', own.finalSet) > instr('ANY', fresh.finalSet)";
  Db().Run(
      fmt::format("update main.essay set upload = 'N' where upload = 'Y' and rowid in"
                  " (select own.rowid {})",
                  kFurther));
  Db().Run(fmt::format("delete from temp.fresh_essay where rowid in (select fresh.rowid {})", kFurther));
}

// Another computer has sent them.
void SyncRecords::DropRefusedThatAreThere() {
  for (const RecordKind kind : kAllKinds) {
    Db().Run(fmt::format("delete from {0} where upload = 'R' and {1} in (select {1} from temp.fresh_{0})",
                         WordsOf(kind).name, WordsOf(kind).key));
  }
}

void SyncRecords::KeepLost(RecordKind kind, const ReloadRules& rules) {
  const auto& words = WordsOf(kind);
  Db().Run(fmt::format("update {} set upload = 'N' where {} and rowid in ({})", words.name,
                       rules.isBehind ? "1" : HasId(words), LostRows(words, rules)));
  if (kind != RecordKind::kEssay) GiveContentIds(kind);
}

// Several computers may keep the same rows from before they had ids: equal ones get equal ids on each.
void SyncRecords::GiveContentIds(RecordKind kind) {
  constexpr std::uint64_t kSixteenDigits = 10'000'000'000'000'000;
  const auto& words = WordsOf(kind);
  std::map<std::string, int> equalOnes;
  std::vector<std::vector<base::DbValue>> ids;
  Db().Run(fmt::format("select rowid, sDate, {} from {} where upload = 'N' and not {} order by {}, rowid",
                       Trimmed(words), words.name, HasId(words), words.key),
           {}, [&](const base::DbRow& row) {
             std::string content;
             for (int i = 2; i < row.Count(); ++i) content.append(row.View(i)).append("\n");
             base::RowHash hash;
             hash.Add(content);
             hash.Add(std::to_string(++equalOnes[content]));
             ids.push_back({fmt::format("7{}{:016}", base::Replace(row.Text(1), "-", ""),
                                        hash.Value() % kSixteenDigits),
                            row.Number(0)});
           });
  for (const auto& id : ids) {
    Db().Run(fmt::format("update {} set {} = ? where rowid = ?", words.name, words.key), id);
  }
}

void SyncRecords::CopyTo(const std::string& path) { Db().Run("vacuum into ?", {path}); }

}  // namespace marovane
