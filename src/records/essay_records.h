// Statements about essays and the sentences that belong to them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/day.h"
#include "records/record_db.h"

namespace marovane {

/// Texts are UTF-8; the apostrophe may be either.
struct EssayRow {
  std::string essayId;
  std::string workId;
  std::string quiz;      ///< title
  std::string orgEssay;  ///< the text as it was sent
  std::string newEssay;  ///< the text with its corrections; as it was sent until the walk has finished
  std::string upload = "N";
  std::string finalSet = "A";  ///< 'A' analysis not finished, 'N' finished, 'Y' handed in
  base::Day sDate;
};

/// An essay from a row with all columns of its table. Throws RunTimeError when its day is none.
EssayRow EssayFrom(const base::DbRow& row);

/// Works on the connection of the record database, which must outlive it. Texts come back as they are stored.
/// Every procedure throws RunTimeError when its statement fails.
class EssayRecords {
 public:
  explicit EssayRecords(RecordDb& records) : records_(records) {}

  void InsertEssay(const EssayRow& row);
  /// Nothing for an unknown id.
  std::optional<EssayRow> FindEssay(const std::string& essayId);
  /// Stores the corrected text of an essay whose last sentence has passed.
  void FinishEssay(const std::string& essayId, const std::string& newEssay);
  void HandInEssay(const std::string& essayId, const std::string& workId);
  int CountHandedIn(const std::string& workId);

  /// A sentence that was judged before, in an essay or outside. Nothing when there is none of this text.
  std::optional<OkSentence> FindOkSentence(const std::string& sentence);
  std::optional<ErrSentence> FindErrSentence(const std::string& sentence);

  /// Sentences of an essay in their order within it; attempts at one sentence in the order of time.
  std::vector<OkSentence> OkSentencesOf(const std::string& essayId);
  /// Refused sentences of an essay in the order of time.
  std::vector<ErrSentence> ErrSentencesOf(const std::string& essayId);

 private:
  base::Database& Db() { return records_.Db(); }

  RecordDb& records_;
};

}  // namespace marovane
