// What upload and synchronisation read and change.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/day.h"
#include "protocol/post.h"
#include "records/record_db.h"

namespace marovane {

/// Rows that the server does not know yet, or does not know to be deleted. Texts as stored.
struct PendingRows {
  std::vector<std::string> ids;
  std::vector<protocol::PostedRow> rows;  ///< without what is kept
};

/// Every procedure throws RunTimeError when a statement fails.
class SyncRecords {
 public:
  explicit SyncRecords(RecordDb& records) : records_(records) {}

  /// Rows with the flags 'N' and 'D'.
  int CountPending(protocol::RecordKind kind);
  bool HasPending();
  /// The same rows, the oldest first.
  PendingRows Pending(protocol::RecordKind kind);
  /// Sentences with the flag 'Y' that say the same as this row.
  int CountUploadedLike(protocol::RecordKind kind, const protocol::Row& row);
  /// True for a sentence that was deleted before it was ever sent.
  bool WasNeverSent(const std::string& id);
  /// What was sent: new rows become 'Y', deleted ones go, unless their flag has changed since.
  void MarkSent(protocol::RecordKind kind, const std::vector<std::string>& newIds,
                const std::vector<std::string>& deletedIds);

  /// Stored text of the newest sentence; of the newest essay its id. "" without one.
  std::string Newest(protocol::RecordKind kind);
  /// Sum of the hashes of all rows from a day on, which the server makes likewise.
  std::uint64_t Digest(base::Day from);

  /// A fresh set of all records, which is collected beside the present one.
  void BeginReload();
  /// Apostrophes may be either.
  /// @param ids local keys of sentences; essays have their own
  void AddToReload(protocol::RecordKind kind, const std::vector<std::string>& ids,
                   const std::vector<protocol::Row>& rows);
  /// Puts the fresh set in place of the present one, all at once. False, and nothing has changed, when
  /// meanwhile something waits to be uploaded.
  bool CommitReload();

 private:
  base::Database& Db() { return records_.Db(); }

  RecordDb& records_;
};

}  // namespace marovane
