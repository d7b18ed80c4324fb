// The upload of what is new or deleted: one form per table.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "records/sync_records.h"
#include "sync/outbox.h"

namespace marovane {

struct Program;

/// What a server has refused for good.
struct Refusals {
  bool account = false;  ///< it does not know the account: nothing was sent, and everything waits
  bool login = false;    ///< it wants a login first: everything waits
  int rows = 0;          ///< rows that it does not accept; they stay on this computer
};

/// Sends what waits in the outbox, and the pending rows of each table. What does not arrive stays in the
/// outbox; the rows lose their flags either way. Throws RunTimeError when records or files fail.
class Upload {
 public:
  /// @param announce called before each table with the detail for the progress box
  /// @param notesSeen the server is the one that the records belong to: a post that has arrived was seen
  /// there
  Upload(Program& program, SyncRecords& records, Outbox& outbox, bool notesSeen,
         std::function<void(const std::string&)> announce)
      : program_(program),
        records_(records),
        outbox_(outbox),
        notesSeen_(notesSeen),
        announce_(std::move(announce)) {}

  /// Marks as sent the rows of posts that were on their way when the program last ended.
  static void MarkOutboxSent(SyncRecords& records, Outbox& outbox);

  Refusals Run();

 private:
  enum class Arrival { kStored, kRefused, kAccountRefused, kNotNow };

  void SendWaiting();
  void SendTable(protocol::RecordKind kind);
  void SendRows(protocol::RecordKind kind, PendingRows rows);
  void SendHalves(protocol::RecordKind kind, PendingRows rows);
  Post MakePost(protocol::RecordKind kind, const PendingRows& rows) const;
  bool MustWait(protocol::RecordKind kind) const { return refusals_.login || waiting_.contains(kind); }
  Arrival Send(const Post& post);
  std::string PostRows(const Post& post, const std::string& body, const std::string& oldAccount);
  void TakeBack(const KeptPost& kept);
  void NoteArrival(const KeptPost& kept);

  Program& program_;
  SyncRecords& records_;
  Outbox& outbox_;
  const bool notesSeen_;
  std::function<void(const std::string&)> announce_;
  std::set<protocol::RecordKind>
      waiting_;  // kinds of which something waits: later posts must not overtake it
  Refusals refusals_;
};

}  // namespace marovane
