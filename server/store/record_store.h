// Sentences and essays of the learners, as their programs post them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/database.h"

namespace server {

enum class RecordKind { kRight, kFaulty, kEssay };

/// One row of a post.
struct PostedRow {
  RecordKind kind = RecordKind::kRight;
  bool isDeletion = false;
  /// Columns of the table behind `account`, in their order.
  std::vector<std::string> columns;
  /// Of a deletion: rows equal to this one that the learner has kept.
  std::size_t kept = 0;
};

/// Works on a database that `OpenSqliteStore` has brought up to date. May be used from several threads; each
/// call is one transaction. Throws std::runtime_error when the database fails; then nothing has changed.
class RecordStore {
 public:
  explicit RecordStore(const std::filesystem::path& file);

  /// Takes the rows of a post: first the deletions, then the new rows in their order. A post that was taken
  /// before, told by its identifier, changes nothing; a post without one ("") is always taken.
  void TakePost(const std::string& account, const std::string& postId, const std::vector<PostedRow>& rows);

  /// Copies the rows of another account behind those of this one, each only once however often it is asked.
  void Merge(const std::string& account, const std::string& from);

  /// The newest essay's number and the newest sentences from a day (ISO text) on, joined as the program joins
  /// them; "" for all days.
  std::string ChecksumText(const std::string& account, const std::string& fromDay);

  /// The digest of all rows from a day (ISO text) on.
  std::uint64_t Digest(const std::string& account, const std::string& fromDay);

  /// At most `limit` rows behind the one with the number `after`, oldest first: the row's number, then its
  /// columns behind `account`.
  std::vector<std::vector<std::string>> Rows(const std::string& account, RecordKind kind,
                                             const std::string& after, std::size_t limit);

 private:
  void Delete(const std::string& account, const PostedRow& row);
  void Insert(const std::string& account, const PostedRow& row);
  std::string First(const std::string& sql, const std::vector<base::DbValue>& parameters);
  void CopySince(const std::string& table, const std::string& account, const std::string& from);

  std::mutex mutex_;
  std::unique_ptr<base::Database> database_;
};

}  // namespace server
