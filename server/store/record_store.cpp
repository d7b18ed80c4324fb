#include "server/store/record_store.h"

#include <fmt/format.h>

#include <utility>

#include "base/transaction.h"
#include "protocol/digest.h"
#include "protocol/unique_id.h"
#include "server/services/random_text.h"
#include "server/store/row_id.h"
#include "server/store/store_database.h"

namespace server {

using protocol::RecordKind;

namespace {

constexpr const char* kSentenceColumns = "errcode, sentence, day, essay_id, essay_s_id, have_htm";
constexpr const char* kEssayColumns = "day, essay_id, work_id, final_set, quiz, org_essay, new_essay";

constexpr const char* kEqualSentences =
    " FROM sentence WHERE account = ? AND errcode = ? AND sentence = ? AND day = ? AND essay_id = ?"
    " AND essay_s_id = ? AND have_htm = ?";
// What an essay keeps for life; its state and its corrected text change.
constexpr const char* kSameEssays =
    " FROM essay WHERE account = ? AND day = ? AND essay_id = ? AND work_id = ? AND org_essay = ?";

std::vector<base::DbValue> With(const std::string& account, const protocol::Row& row) {
  std::vector<base::DbValue> all{account};
  for (const auto field : protocol::FieldsOf(row)) all.emplace_back(std::string(field));
  return all;
}

std::vector<base::DbValue> EssayIdentity(const std::string& account, const protocol::EssayRow& row) {
  return {account, row.day, row.essayId, row.workId, row.orgEssay};
}

}  // namespace

RecordStore::RecordStore(const std::filesystem::path& file) : database_(OpenStoreDatabase(file)) {}

std::string RecordStore::First(const std::string& sql, const std::vector<base::DbValue>& parameters) {
  return database_->Text(sql, parameters).value_or("");
}

void RecordStore::StorePost(const std::string& account, const std::string& postId,
                            const std::vector<protocol::PostedRow>& rows) {
  const std::lock_guard lock(mutex_);
  base::Transaction transaction(*database_);
  if (!NotePost(account, postId)) return;
  for (const auto& row : rows) {
    if (row.isDeletion) Delete(account, row);
  }
  for (const auto& row : rows) {
    if (!row.isDeletion) Insert(account, row);
  }
  transaction.Commit();
}

// False for a post that was noted before.
bool RecordStore::NotePost(const std::string& account, std::string postId) {
  constexpr std::size_t kIdBytes = 16;
  if (postId.empty()) postId = RandomHex(kIdBytes);
  if (!First("SELECT 1 FROM post WHERE account = ? AND id = ?", {account, postId}).empty()) return false;
  database_->Run("INSERT INTO post (account, id) VALUES (?, ?)", {account, postId});
  return true;
}

bool RecordStore::IsGone(const std::string& account, const std::string& id) {
  return protocol::IsUniqueId(id) &&
         !First("SELECT 1 FROM gone WHERE account = ? AND uid = ?", {account, id}).empty();
}

void RecordStore::NoteGone(const std::string& account, const std::string& id) {
  if (!protocol::IsUniqueId(id)) return;  // an essay of another computer may have the same number
  database_->Run("INSERT OR IGNORE INTO gone (account, uid) VALUES (?, ?)", {account, id});
}

// A row without an id is known by what it says.
void RecordStore::Delete(const std::string& account, const protocol::PostedRow& posted) {
  if (!posted.id.empty()) return DeleteById(account, posted.id);
  const auto* essay = std::get_if<protocol::EssayRow>(&posted.row);
  const std::string matching = essay != nullptr ? kSameEssays : kEqualSentences;
  const auto parameters = essay != nullptr ? EssayIdentity(account, *essay) : With(account, posted.row);
  if (std::cmp_less_equal(database_->Number("SELECT count(*)" + matching, parameters), posted.kept)) return;
  const char* const table = essay != nullptr ? "essay" : "sentence";
  const std::string newest = First("SELECT max(id)" + matching, parameters);
  NoteGone(account,
           First(fmt::format("SELECT {} FROM {} WHERE id = ?", essay != nullptr ? "essay_id" : "uid", table),
                 {newest}));
  database_->Run(fmt::format("DELETE FROM {} WHERE id = ?", table), {newest});
}

// Ids do not say of what they are.
void RecordStore::DeleteById(const std::string& account, const std::string& id) {
  database_->Run("DELETE FROM sentence WHERE account = ? AND uid = ?", {account, id});
  database_->Run("DELETE FROM essay WHERE account = ? AND essay_id = ?", {account, id});
  NoteGone(account, id);
}

void RecordStore::Insert(const std::string& account, const protocol::PostedRow& posted) {
  const auto* essay = std::get_if<protocol::EssayRow>(&posted.row);
  if (IsGone(account, essay != nullptr ? essay->essayId : posted.id)) return;
  if (essay != nullptr) return InsertEssay(account, *essay);
  InsertSentence(account, posted);
}

void RecordStore::InsertSentence(const std::string& account, const protocol::PostedRow& posted) {
  auto values = With(account, posted.row);
  values.emplace_back(posted.id.empty() ? NextId(account, std::get<protocol::SentenceRow>(posted.row))
                                        : posted.id);
  database_->Run(
      fmt::format("INSERT OR IGNORE INTO sentence (account, {}, uid) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
                  kSentenceColumns),
      values);
}

std::string RecordStore::NextId(const std::string& account, const protocol::SentenceRow& row) {
  const int latest = database_->Number("SELECT seq FROM sqlite_sequence WHERE name = 'sentence'");
  return IdOfRow(std::int64_t{latest} + 1, account, row.sentence, row.day);
}

void RecordStore::InsertEssay(const std::string& account, const protocol::EssayRow& essay) {
  const std::string same = First(std::string("SELECT max(id)") + kSameEssays, EssayIdentity(account, essay));
  if (same.empty()) {
    database_->Run(
        fmt::format("INSERT INTO essay (account, {}) VALUES (?, ?, ?, ?, ?, ?, ?, ?)", kEssayColumns),
        With(account, essay));
    return;
  }
  // From begun ('A') over finished ('N') to handed in ('Y') and never back, whatever a computer still posts
  // that has not heard of it.
  database_->Run(
      "UPDATE essay SET final_set = ?, quiz = ?, new_essay = ?"
      " WHERE id = ? AND instr('ANY', final_set) <= instr('ANY', ?)",
      {essay.finalSet, essay.quiz, essay.newEssay, same, essay.finalSet});
}

void RecordStore::Merge(const std::string& account, const std::string& from) {
  const std::lock_guard lock(mutex_);
  base::Transaction transaction(*database_);
  const bool hasSentences = CopySince("sentence", account, from);
  const bool hasEssays = CopySince("essay", account, from);
  if (hasSentences || hasEssays) NotePost(account, "");
  transaction.Commit();
}

// Says whether there were any.
bool RecordStore::CopySince(const std::string& table, const std::string& account, const std::string& from) {
  const std::string last =
      First("SELECT last_id FROM merge WHERE account = ? AND from_account = ? AND kind = ?",
            {account, from, table});
  const std::string newest = First(fmt::format("SELECT max(id) FROM {} WHERE account = ?", table), {from});
  if (newest.empty() || newest == last) return false;
  const bool isEssay = table == "essay";
  // Essays have numbers that several computers may have made.
  const std::string isThere =
      isEssay
          ? "EXISTS (SELECT 1 FROM essay AS own WHERE own.account = ? AND own.essay_id = essay.essay_id AND"
            " own.day = essay.day AND own.work_id = essay.work_id AND own.org_essay = essay.org_essay)"
          : "uid IN (SELECT uid FROM sentence WHERE account = ?)";
  const std::string columns = isEssay ? kEssayColumns : fmt::format("{}, uid", kSentenceColumns);
  database_->Run(fmt::format("INSERT INTO {0} (account, {1}) SELECT ?, {1} FROM {0} WHERE account = ?"
                             " AND id > CAST(? AS INTEGER) AND NOT {3}"
                             " AND {2} NOT IN (SELECT uid FROM gone WHERE account = ?) ORDER BY id",
                             table, columns, isEssay ? "essay_id" : "uid", isThere),
                 {account, from, last, account, account});
  database_->Run("INSERT OR REPLACE INTO merge VALUES (?, ?, ?, CAST(? AS INTEGER))",
                 {account, from, table, newest});
  return true;
}

protocol::ServerState RecordStore::State(const std::string& account, const protocol::Seen& seen) {
  const std::lock_guard lock(mutex_);
  protocol::ServerState state{
      .server = First("SELECT id FROM server", {}),
      .latestPost = First("SELECT id FROM post WHERE account = ? ORDER BY seq DESC LIMIT 1", {account})};
  const bool hasSeenPost = !seen.latestPost.empty();
  state.knowsSeen =
      (seen.server.empty() || seen.server == state.server) &&
      (!hasSeenPost ||
       !First("SELECT 1 FROM post WHERE account = ? AND id = ?", {account, seen.latestPost}).empty());
  return state;
}

std::string RecordStore::NewestDigest(const std::string& account, const std::string& fromDay, Order order) {
  const std::lock_guard lock(mutex_);
  const auto newest = [&](const char* errcodes) {
    return First(fmt::format("SELECT sentence FROM sentence WHERE account = ? AND errcode {} AND day >= ?"
                             " ORDER BY {} DESC LIMIT 1",
                             errcodes, order == Order::kById ? "uid" : "id"),
                 {account, fromDay});
  };
  return protocol::NewestDigest(
      First("SELECT max(essay_id) FROM essay WHERE account = ? AND day >= ?", {account, fromDay}),
      newest("= ''"), newest("<> ''"));
}

std::uint64_t RecordStore::Digest(const std::string& account, const std::string& fromDay) {
  const std::lock_guard lock(mutex_);
  std::uint64_t sum = 0;
  for (const auto& [columns, table] :
       {std::pair{fmt::format("{}, uid", kSentenceColumns), "sentence"}, {kEssayColumns, "essay"}}) {
    database_->Run(fmt::format("SELECT {} FROM {} WHERE account = ? AND day >= ?", columns, table),
                   {account, fromDay}, [&](const base::DbRow& row) { sum += protocol::HashOf(row); });
  }
  return sum;
}

std::vector<StoredRow> RecordStore::Rows(const std::string& account, RecordKind kind,
                                         const std::string& after, std::size_t limit) {
  const bool isEssay = kind == RecordKind::kEssay;
  const char* const condition = isEssay ? "1" : kind == RecordKind::kRight ? "errcode = ''" : "errcode <> ''";
  const std::lock_guard lock(mutex_);
  std::vector<StoredRow> rows;
  rows.reserve(limit);
  database_->Run(
      fmt::format("SELECT id, {}, {} FROM {} WHERE account = ? AND {} AND id > CAST(? AS INTEGER)"
                  " ORDER BY id LIMIT CAST(? AS INTEGER)",
                  isEssay ? "''" : "uid", isEssay ? kEssayColumns : kSentenceColumns,
                  isEssay ? "essay" : "sentence", condition),
      {account, after, std::to_string(limit)}, [&](const base::DbRow& row) {
        auto fields = row.Texts();
        rows.push_back({fields[0], {protocol::RowFrom(kind, std::span(fields).subspan(2)), fields[1]}});
      });
  return rows;
}

std::vector<GoneRow> RecordStore::Gone(const std::string& account, const std::string& after,
                                       std::size_t limit) {
  const std::lock_guard lock(mutex_);
  std::vector<GoneRow> rows;
  database_->Run(
      "SELECT id, uid FROM gone WHERE account = ? AND id > CAST(? AS INTEGER)"
      " ORDER BY id LIMIT CAST(? AS INTEGER)",
      {account, after, std::to_string(limit)}, [&](const base::DbRow& row) {
        rows.push_back({row.Text(0), row.Text(1)});
      });
  return rows;
}

}  // namespace server
