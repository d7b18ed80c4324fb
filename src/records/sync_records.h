// What upload and synchronisation read and change.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/day.h"
#include "protocol/post.h"
#include "protocol/stream.h"
#include "records/record_db.h"

namespace marovane {

/// Rows that the server does not know yet, or does not know to be deleted. Texts as stored.
struct PendingRows {
  std::vector<std::string> ids;  ///< local keys
  std::vector<protocol::PostedRow> rows;
};

struct RecordCounts {
  int sentences = 0;
  int essays = 0;
};

/// Whom and what the flag 'Y' speaks of.
struct Belongs {
  std::string account;    ///< "" before the first synchronisation
  std::string server;     ///< its name for itself; "" of one that has none
  std::string seen;       ///< the latest post of the account that was seen there
  bool isBehind = false;  ///< the server may lack what this computer has

  bool operator==(const Belongs&) const = default;
};

/// What a reload knows of the server.
struct ReloadRules {
  bool hasIds = false;    ///< it tells the ids of rows, and which were deleted
  bool isBehind = false;  ///< as in Belongs
};

/// Every procedure throws RunTimeError when a statement fails.
class SyncRecords {
 public:
  explicit SyncRecords(RecordDb& records) : records_(records) {}

  /// Rows with the flags 'N' and 'D', and rows long gone of which a server has to hear again.
  int CountPending(protocol::RecordKind kind);
  bool HasPending();
  /// Nothing is pending, and no server has refused any of it.
  bool IsAllSent();
  /// All rows that are not deleted.
  RecordCounts Count();
  /// The rows that `CountPending` counts, the oldest first.
  PendingRows Pending(protocol::RecordKind kind);
  /// What was sent: new rows become 'Y', deleted ones go, unless their flag has changed since. Also of a post
  /// that an older version has made, before the rows got ids of their own.
  void MarkSent(protocol::RecordKind kind, const std::vector<std::string>& newIds,
                const std::vector<std::string>& deletedIds);
  /// What was marked as sent waits again.
  void MarkUnsent(protocol::RecordKind kind, const std::vector<std::string>& newIds,
                  const std::vector<std::string>& deletedIds);
  /// The same for one row that says the same as this one, if there is one.
  void MarkOneUnsent(protocol::RecordKind kind, const protocol::Row& row);
  /// A server does not accept these rows, which were marked as sent. New ones stay, and no upload or reload
  /// concerns them; deleted ones stay away.
  void MarkRefused(protocol::RecordKind kind, const std::vector<std::string>& newIds,
                   const std::vector<std::string>& deletedIds);

  /// Refused rows wait again: the server may have become a newer one.
  /// @return how many
  int OfferRefusedAgain();

  Belongs BelongsTo();
  void SetBelongsTo(const Belongs& belongs);
  /// Notes the latest post that was seen, and leaves alone what another process may have noted beside it.
  void NoteSeen(const std::string& post);
  /// True when something was sent before.
  bool HasSent();
  /// Another server, or one that was restored from an older copy: it hears of deletions, of the state of
  /// essays and of refused rows again. What else it lacks is found by a reload.
  void RepeatTo(const Belongs& belongs);

  /// Stored text of the newest sentence; of the newest essay its id. "" without one.
  std::string Newest(protocol::RecordKind kind);
  /// Sum of the hashes of all rows from a day on, which the server makes likewise.
  std::uint64_t Digest(base::Day from);

  /// A fresh set of all records, which is collected beside the present one.
  void BeginReload();
  /// Apostrophes may be either.
  /// @param rows sentences with their local keys; essays have their own
  void AddToReload(protocol::RecordKind kind, const std::vector<protocol::StreamRow>& rows);
  /// Ids of rows that were deleted.
  void AddGone(const std::vector<std::string>& ids);
  /// How many present rows the fresh set would take away though nobody is known to have deleted them.
  int CountTakenAway(const ReloadRules& rules);
  /// Puts the fresh set in place of the present one, all at once. Rows that the server has lost stay, as do
  /// essays that are less far there, and wait to be sent again. False, and nothing has changed, when
  /// meanwhile something waits to be uploaded.
  bool CommitReload(const ReloadRules& rules);
  /// A copy of the whole database in a new file.
  void CopyTo(const std::string& path);
  /// The next statement opens the database again, which may be another one then.
  void Close() { records_.Close(); }

 private:
  base::Database& Db() { return records_.Db(); }
  void TakeSentBack(protocol::RecordKind kind, const std::vector<std::string>& newIds,
                    const std::vector<std::string>& deletedIds, const char* flag);
  void FollowGone();
  void Replace(protocol::RecordKind kind);
  std::int64_t CountSameBeginning(protocol::RecordKind kind);
  void KeepFurtherEssays();
  void DropRefusedThatAreThere();
  int CountRefused();
  void KeepLost(protocol::RecordKind kind, const ReloadRules& rules);
  void GiveContentIds(protocol::RecordKind kind);

  RecordDb& records_;
};

}  // namespace marovane
