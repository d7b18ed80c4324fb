#include "server/store/record_store.h"

#include <fmt/format.h>

#include <utility>

#include "base/transaction.h"
#include "protocol/digest.h"
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
  if (!postId.empty()) {
    if (!First("SELECT 1 FROM post WHERE account = ? AND id = ?", {account, postId}).empty()) return;
    database_->Run("INSERT INTO post VALUES (?, ?)", {account, postId});
  }
  for (const auto& row : rows) {
    if (row.isDeletion) Delete(account, row);
  }
  for (const auto& row : rows) {
    if (!row.isDeletion) Insert(account, row);
  }
  transaction.Commit();
}

void RecordStore::Delete(const std::string& account, const protocol::PostedRow& posted) {
  const auto* essay = std::get_if<protocol::EssayRow>(&posted.row);
  const std::string matching = essay != nullptr ? kSameEssays : kEqualSentences;
  const auto parameters = essay != nullptr ? EssayIdentity(account, *essay) : With(account, posted.row);
  if (std::cmp_less_equal(database_->Number("SELECT count(*)" + matching, parameters), posted.kept)) return;
  const std::string newest = First("SELECT max(id)" + matching, parameters);
  database_->Run(fmt::format("DELETE FROM {} WHERE id = ?", essay != nullptr ? "essay" : "sentence"),
                 {newest});
}

void RecordStore::Insert(const std::string& account, const protocol::PostedRow& posted) {
  const auto* essay = std::get_if<protocol::EssayRow>(&posted.row);
  if (essay == nullptr) {
    database_->Run(
        fmt::format("INSERT INTO sentence (account, {}) VALUES (?, ?, ?, ?, ?, ?, ?)", kSentenceColumns),
        With(account, posted.row));
    return;
  }
  const std::string same = First(std::string("SELECT max(id)") + kSameEssays, EssayIdentity(account, *essay));
  if (same.empty()) {
    database_->Run(
        fmt::format("INSERT INTO essay (account, {}) VALUES (?, ?, ?, ?, ?, ?, ?, ?)", kEssayColumns),
        With(account, posted.row));
  } else {
    // An essay that was handed in stays so, whatever a computer still posts that has not heard of it.
    database_->Run(
        "UPDATE essay SET final_set = CASE final_set WHEN 'Y' THEN 'Y' ELSE ? END, quiz = ?, new_essay = ?"
        " WHERE id = ?",
        {essay->finalSet, essay->quiz, essay->newEssay, same});
  }
}

void RecordStore::Merge(const std::string& account, const std::string& from) {
  const std::lock_guard lock(mutex_);
  base::Transaction transaction(*database_);
  CopySince("sentence", account, from);
  CopySince("essay", account, from);
  transaction.Commit();
}

void RecordStore::CopySince(const std::string& table, const std::string& account, const std::string& from) {
  const std::string last =
      First("SELECT last_id FROM merge WHERE account = ? AND from_account = ? AND kind = ?",
            {account, from, table});
  const std::string newest = First(fmt::format("SELECT max(id) FROM {} WHERE account = ?", table), {from});
  if (newest.empty()) return;
  const char* const columns = table == "essay" ? kEssayColumns : kSentenceColumns;
  database_->Run(fmt::format("INSERT INTO {0} (account, {1}) SELECT ?, {1} FROM {0} WHERE account = ?"
                             " AND id > CAST(? AS INTEGER) ORDER BY id",
                             table, columns),
                 {account, from, last});
  database_->Run("INSERT OR REPLACE INTO merge VALUES (?, ?, ?, CAST(? AS INTEGER))",
                 {account, from, table, newest});
}

std::string RecordStore::NewestDigest(const std::string& account, const std::string& fromDay) {
  const std::lock_guard lock(mutex_);
  const auto newest = [&](const char* errcodes) {
    return First(fmt::format("SELECT sentence FROM sentence WHERE account = ? AND errcode {} AND day >= ?"
                             " ORDER BY id DESC LIMIT 1",
                             errcodes),
                 {account, fromDay});
  };
  return protocol::NewestDigest(
      First("SELECT max(essay_id) FROM essay WHERE account = ? AND day >= ?", {account, fromDay}),
      newest("= ''"), newest("<> ''"));
}

std::uint64_t RecordStore::Digest(const std::string& account, const std::string& fromDay) {
  const std::lock_guard lock(mutex_);
  std::uint64_t sum = 0;
  for (const auto& [columns, table] : {std::pair{kSentenceColumns, "sentence"}, {kEssayColumns, "essay"}}) {
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
  database_->Run(
      fmt::format("SELECT id, {} FROM {} WHERE account = ? AND {} AND id > CAST(? AS INTEGER)"
                  " ORDER BY id LIMIT CAST(? AS INTEGER)",
                  isEssay ? kEssayColumns : kSentenceColumns, isEssay ? "essay" : "sentence", condition),
      {account, after, std::to_string(limit)}, [&](const base::DbRow& row) {
        auto fields = row.Texts();
        rows.push_back({fields[0], protocol::RowFrom(kind, std::span(fields).subspan(1))});
      });
  return rows;
}

}  // namespace server
