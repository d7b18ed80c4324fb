// What upload and synchronisation read and change.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/day.h"
#include "records/day_records.h"

namespace base {
class Database;
}

namespace marovane {

class RecordDb;

enum class RecordTable { kOkSentence, kErrSentence, kEssay };

/// A row that the server does not know yet, or does not know to be deleted. Texts as stored.
struct PendingRow {
  std::string id;
  std::string upload;  ///< 'N' or 'D'
  std::string err;     ///< error code; "" of a right sentence, "essay" of an essay
  std::string text;    ///< sentence; of an essay `finalSet`
  std::string sDate;   ///< as stored
  std::string essayId;
  std::string subId;    ///< `essaySId`; of an essay `workId`
  std::string haveHtm;  ///< of sentences
  std::string quiz;     ///< these three of essays
  std::string orgEssay;
  std::string newEssay;
};

/// Every procedure throws RunTimeError when a statement fails.
class SyncRecords {
 public:
  explicit SyncRecords(RecordDb& records) : records_(records) {}

  /// Rows with the flags 'N' and 'D'.
  int CountPending(RecordTable table);
  bool HasPending();
  /// The same rows, the oldest first.
  std::vector<PendingRow> Pending(RecordTable table);
  /// Sentences with the flag 'Y' that say the same as this row.
  int CountUploadedLike(RecordTable table, const PendingRow& row);
  /// True for a sentence that was deleted before it was ever sent.
  bool WasNeverSent(const PendingRow& row);
  /// What was sent: new rows become 'Y', deleted ones go, unless their flag has changed since.
  void Settle(RecordTable table, const std::vector<std::string>& newIds,
              const std::vector<std::string>& deletedIds);

  /// Stored text of the newest sentence; of the newest essay its id. "" without one.
  std::string Newest(RecordTable table);
  /// Sum of the hashes of all rows from a day on, which the server makes likewise.
  std::uint64_t Digest(base::Day from);

  /// A fresh set of all records, which is collected beside the present one.
  void BeginReload();
  /// Rows with the columns of the table in their order; apostrophes may be either.
  void AddToReload(RecordTable table, const std::vector<std::vector<std::string>>& rows);
  /// Puts the fresh set in place of the present one, all at once. False, and nothing has changed, when
  /// meanwhile something waits to be uploaded.
  bool CommitReload();

 private:
  base::Database& Db();

  RecordDb& records_;
};

}  // namespace marovane
