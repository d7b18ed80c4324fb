// Statements about the essays of a topic, for the lists of topics and of essays.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "records/essay_records.h"

namespace marovane {

/// Works on the connection of the record database, which must outlive it. Texts come back as they are stored.
/// Every procedure throws RunTimeError when its statement fails.
class EssayTopics {
 public:
  explicit EssayTopics(RecordDb& records) : records_(records) {}

  /// Topics that have essays, the newest id first.
  std::vector<std::string> WorkIds();
  /// Essays of a topic in the order of time.
  std::vector<EssayRow> EssaysOf(const std::string& workId);
  /// The essay of a topic that was stored first; nothing when there is none.
  std::optional<EssayRow> FirstOf(const std::string& workId);
  /// Essays that are not deleted, the newest first.
  /// @param workId their topic, "" for all
  std::vector<EssayRow> Listed(const std::string& workId);
  /// Refused sentences of an essay.
  int CountMistakes(const std::string& essayId);
  bool IsHandedIn(const std::string& essayId);
  /// Marks an essay and its sentences as deleted. The next upload takes them away.
  void Delete(const std::string& essayId);
  /// True when the server has not been told of some essay or sentence.
  bool HasNew();

 private:
  base::Database& Db() { return records_.Db(); }
  std::vector<EssayRow> Select(const std::string& rest, const std::vector<base::DbValue>& parameters);

  RecordDb& records_;
};

}  // namespace marovane
