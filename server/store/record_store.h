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
#include "protocol/server_state.h"
#include "protocol/stream.h"

namespace server {

struct StoredRow {
  std::string number;
  protocol::StreamRow row;
};

struct GoneRow {
  std::string number;
  std::string id;
};

/// Works on a database that `OpenAccountStore` has brought up to date. May be used from several threads; each
/// call is one transaction. Throws std::runtime_error when the database fails; then nothing has changed.
class RecordStore {
 public:
  explicit RecordStore(const std::filesystem::path& file);

  /// Takes the rows of a post: first the deletions, then the new rows in their order. A post that was taken
  /// before, known by its identifier, changes nothing; a post without one ("") is always taken. A new row
  /// whose id is there already, or was deleted, changes nothing either.
  void StorePost(const std::string& account, const std::string& postId,
                 const std::vector<protocol::PostedRow>& rows);

  /// Copies the rows of another account after those of this one, each only once however often it is asked.
  void Merge(const std::string& account, const std::string& from);

  /// What this server is, and what it knows of the account's records.
  protocol::ServerState State(const std::string& account, const protocol::Seen& seen);

  /// The digest of the newest essay and the newest sentences from a day (ISO text) on; "" for all days.
  /// @param order what makes a sentence newer: programs whose rows have no ids know the order of arrival
  /// alone
  enum class Order { kById, kOfArrival };
  std::string NewestDigest(const std::string& account, const std::string& fromDay,
                           Order order = Order::kById);

  /// The digest of all rows from a day (ISO text) on.
  std::uint64_t Digest(const std::string& account, const std::string& fromDay);

  /// At most `limit` rows after the one with the number `after`, oldest first.
  std::vector<StoredRow> Rows(const std::string& account, protocol::RecordKind kind, const std::string& after,
                              std::size_t limit);
  /// The same of the ids of deleted rows.
  std::vector<GoneRow> Gone(const std::string& account, const std::string& after, std::size_t limit);

 private:
  bool NotePost(const std::string& account, std::string postId);
  void Delete(const std::string& account, const protocol::PostedRow& posted);
  void DeleteById(const std::string& account, const std::string& id);
  void Insert(const std::string& account, const protocol::PostedRow& posted);
  void InsertSentence(const std::string& account, const protocol::PostedRow& posted);
  std::string NextId(const std::string& account, const protocol::SentenceRow& row);
  void InsertEssay(const std::string& account, const protocol::EssayRow& essay);
  bool IsGone(const std::string& account, const std::string& id);
  void NoteGone(const std::string& account, const std::string& id);
  std::string First(const std::string& sql, const std::vector<base::DbValue>& parameters);
  bool CopySince(const std::string& table, const std::string& account, const std::string& from);

  std::mutex mutex_;
  std::unique_ptr<base::Database> database_;
};

}  // namespace server
