// Statements about essays, their topics and the sentences that belong to them.
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
  /// Marks an essay as the answer to an assignment.
  void HandInEssay(const std::string& essayId, const std::string& workId);
  /// Number of essays of a topic that were handed in.
  int CountHandedIn(const std::string& workId);
  /// True also for an unknown id.
  bool IsHandedIn(const std::string& essayId);
  /// Marks an essay and its sentences as deleted. The next upload removes them.
  void Delete(const std::string& essayId);

  /// Topics that have essays, the newest id first. Essays that are deleted are in no list.
  std::vector<std::string> WorkIds();
  /// Essays of a topic in the order of time.
  std::vector<EssayRow> EssaysOf(const std::string& workId);
  /// The essay of a topic that was stored first; nothing when there is none.
  std::optional<EssayRow> FirstOf(const std::string& workId);
  /// Essays that are not deleted, the newest first.
  /// @param workId their topic, "" for all
  std::vector<EssayRow> Listed(const std::string& workId);

  /// A sentence that was judged before, in an essay or outside. Nothing when there is none of this text.
  std::optional<OkSentence> FindOkSentence(const std::string& sentence);
  std::optional<ErrSentence> FindErrSentence(const std::string& sentence);

  /// Sentences of an essay in their order within it; attempts at one sentence in the order of time.
  std::vector<OkSentence> OkSentencesOf(const std::string& essayId);
  /// Refused sentences of an essay in the order of time.
  std::vector<ErrSentence> ErrSentencesOf(const std::string& essayId);
  /// The number of refused sentences of an essay.
  int CountMistakes(const std::string& essayId);

 private:
  base::Database& Db() { return records_.Db(); }

  RecordDb& records_;
};

}  // namespace marovane
