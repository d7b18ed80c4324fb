#include "server/store/record_store.h"

#include <fmt/format.h>

#include <utility>

#include "base/digest.h"
#include "base/text.h"
#include "base/transaction.h"
#include "server/store/store_database.h"

namespace server {

namespace {

constexpr const char* kSentenceColumns = "errcode, sentence, day, essay_id, essay_s_id, have_htm";
constexpr const char* kEssayColumns = "day, essay_id, work_id, final_set, quiz, org_essay, new_essay";

constexpr const char* kEqualSentences =
    " FROM sentence WHERE account = ? AND errcode = ? AND sentence = ? AND day = ? AND essay_id = ?"
    " AND essay_s_id = ? AND have_htm = ?";
// What an essay keeps for life; its state and its corrected text change.
constexpr const char* kSameEssays =
    " FROM essay WHERE account = ? AND day = ? AND essay_id = ? AND work_id = ? AND org_essay = ?";

std::vector<base::DbValue> With(const std::string& first, const std::vector<std::string>& rest) {
  std::vector<base::DbValue> all{first};
  all.insert(all.end(), rest.begin(), rest.end());
  return all;
}

std::vector<base::DbValue> EssayIdentity(const std::string& account, const PostedRow& row) {
  const auto& columns = row.columns;  // of which the 6th is org_essay
  return {account, columns[0], columns[1], columns[2], columns[5]};
}

}  // namespace

RecordStore::RecordStore(const std::filesystem::path& file) : database_(OpenStoreDatabase(file)) {}

std::string RecordStore::First(const std::string& sql, const std::vector<base::DbValue>& parameters) {
  return database_->Text(sql, parameters).value_or("");
}

void RecordStore::TakePost(const std::string& account, const std::string& postId,
                           const std::vector<PostedRow>& rows) {
  const std::lock_guard lock(mutex_);
  base::Transaction transaction(*database_);
  if (!postId.empty()) {
    if (!First("SELECT 1 FROM post WHERE account = ? AND id = ?", {account, postId}).empty()) return;
    database_->Run("INSERT INTO post VALUES (?, ?)", {account, postId});
  }
  for (const PostedRow& row : rows) {
    if (row.isDeletion) Delete(account, row);
  }
  for (const PostedRow& row : rows) {
    if (!row.isDeletion) Insert(account, row);
  }
  transaction.Commit();
}

void RecordStore::Delete(const std::string& account, const PostedRow& row) {
  const bool isEssay = row.kind == RecordKind::kEssay;
  const std::string matching = isEssay ? kSameEssays : kEqualSentences;
  const auto parameters = isEssay ? EssayIdentity(account, row) : With(account, row.columns);
  if (std::cmp_less_equal(database_->Number("SELECT count(*)" + matching, parameters), row.kept)) return;
  const std::string newest = First("SELECT max(id)" + matching, parameters);
  database_->Run(fmt::format("DELETE FROM {} WHERE id = ?", isEssay ? "essay" : "sentence"), {newest});
}

void RecordStore::Insert(const std::string& account, const PostedRow& row) {
  if (row.kind != RecordKind::kEssay) {
    database_->Run(
        fmt::format("INSERT INTO sentence (account, {}) VALUES (?, ?, ?, ?, ?, ?, ?)", kSentenceColumns),
        With(account, row.columns));
    return;
  }
  const std::string same = First(std::string("SELECT max(id)") + kSameEssays, EssayIdentity(account, row));
  if (same.empty()) {
    database_->Run(
        fmt::format("INSERT INTO essay (account, {}) VALUES (?, ?, ?, ?, ?, ?, ?, ?)", kEssayColumns),
        With(account, row.columns));
  } else {
    // An essay that was handed in stays so, whatever a computer still posts that has not heard of it.
    database_->Run(
        "UPDATE essay SET final_set = CASE final_set WHEN 'Y' THEN 'Y' ELSE ? END, quiz = ?, new_essay = ?"
        " WHERE id = ?",
        {row.columns[3], row.columns[4], row.columns[6], same});
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

std::string RecordStore::ChecksumText(const std::string& account, const std::string& fromDay) {
  const std::lock_guard lock(mutex_);
  std::string text =
      base::Trim(First("SELECT max(essay_id) FROM essay WHERE account = ? AND day >= ?", {account, fromDay}),
                 base::kWhiteSpace);
  for (const char* const kind : {"= ''", "<> ''"}) {
    const std::string newest = First(fmt::format("SELECT sentence FROM sentence WHERE account = ? AND errcode"
                                                 " {} AND day >= ? ORDER BY id DESC LIMIT 1",
                                                 kind),
                                     {account, fromDay});
    text += base::Replace(base::Replace(newest, " ", ""), "’", "");
  }
  return text;
}

std::uint64_t RecordStore::Digest(const std::string& account, const std::string& fromDay) {
  const std::lock_guard lock(mutex_);
  std::uint64_t sum = 0;
  const auto add = [&](const base::DbRow& row) {
    base::RowHash hash;
    for (const std::string& field : row.Texts()) hash.Add(field);
    sum += hash.Value();
  };
  database_->Run(fmt::format("SELECT {} FROM sentence WHERE account = ? AND day >= ?", kSentenceColumns),
                 {account, fromDay}, add);
  database_->Run(fmt::format("SELECT {} FROM essay WHERE account = ? AND day >= ?", kEssayColumns),
                 {account, fromDay}, add);
  return sum;
}

std::vector<std::vector<std::string>> RecordStore::Rows(const std::string& account, RecordKind kind,
                                                        const std::string& after, std::size_t limit) {
  const bool isEssay = kind == RecordKind::kEssay;
  const char* const condition = isEssay ? "1" : kind == RecordKind::kRight ? "errcode = ''" : "errcode <> ''";
  const std::lock_guard lock(mutex_);
  std::vector<std::vector<std::string>> rows;
  database_->Run(
      fmt::format("SELECT id, {} FROM {} WHERE account = ? AND {} AND id > CAST(? AS INTEGER)"
                  " ORDER BY id LIMIT CAST(? AS INTEGER)",
                  isEssay ? kEssayColumns : kSentenceColumns, isEssay ? "essay" : "sentence", condition),
      {account, after, std::to_string(limit)}, [&](const base::DbRow& row) { rows.push_back(row.Texts()); });
  return rows;
}

}  // namespace server
