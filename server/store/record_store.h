// Sentences and essays of the learners, as their programs post them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "base/database.h"
#include "protocol/post.h"

namespace server {

struct StoredRow {
  std::string number;
  protocol::Row row;
};

/// Works on a database that `OpenAccountStore` has brought up to date. May be used from several threads; each
/// call is one transaction. Throws std::runtime_error when the database fails; then nothing has changed.
class RecordStore {
 public:
  explicit RecordStore(const std::filesystem::path& file);

  /// Takes the rows of a post: first the deletions, then the new rows in their order. A post that was taken
  /// before, known by its identifier, changes nothing; a post without one ("") is always taken.
  void StorePost(const std::string& account, const std::string& postId,
                 const std::vector<protocol::PostedRow>& rows);

  /// Copies the rows of another account after those of this one, each only once however often it is asked.
  void Merge(const std::string& account, const std::string& from);

  /// The digest of the newest essay and the newest sentences from a day (ISO text) on; "" for all days.
  std::string NewestDigest(const std::string& account, const std::string& fromDay);

  /// The digest of all rows from a day (ISO text) on.
  std::uint64_t Digest(const std::string& account, const std::string& fromDay);

  /// At most `limit` rows after the one with the number `after`, oldest first.
  std::vector<StoredRow> Rows(const std::string& account, protocol::RecordKind kind, const std::string& after,
                              std::size_t limit);

 private:
  void Delete(const std::string& account, const protocol::PostedRow& posted);
  void Insert(const std::string& account, const protocol::PostedRow& posted);
  std::string First(const std::string& sql, const std::vector<base::DbValue>& parameters);
  void CopySince(const std::string& table, const std::string& account, const std::string& from);

  std::mutex mutex_;
  std::unique_ptr<base::Database> database_;
};

}  // namespace server
