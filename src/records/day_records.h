// Days and their sentences: what the diary and the list of sentences read and change.
#pragma once

#include <string>
#include <vector>

#include "base/day.h"

namespace marovane {

class RecordDb;

struct DayCount {
  base::Day day;
  int count = 0;
};

/// A day of the diary, without the sentences of essays.
struct DiaryDay {
  base::Day day;
  int ok = 0;
  int err = 0;
};

/// A sentence of a list, as stored.
struct ListedSentence {
  std::string id;
  std::string sentence;
};

/// Every procedure throws RunTimeError when its statement fails.
class DayRecords {
 public:
  explicit DayRecords(RecordDb& records) : records_(records) {}

  /// `workRec`, the diary's list of days. It is derived from the sentences, and these make it anew.
  void ClearWorkRec();
  void InsertOkDays(const std::vector<DayCount>& days);
  void MergeErrDays(const std::vector<DayCount>& days);
  /// The latest first.
  std::vector<base::Day> WorkRecDays();

  /// Number of sentences per day that are not deleted, in order of days.
  std::vector<DayCount> OkDays();
  std::vector<DayCount> ErrDays();

  /// Number of sentences of a day outside essays, deleted ones included.
  int CountOk(base::Day day);
  int CountErr(base::Day day);

  /// Sentences of the days outside essays, or of all days when there are none given, in order of days. Of
  /// the right ones those that are not deleted; of the faulty ones all.
  std::vector<ListedSentence> OkSentences(const std::vector<base::Day>& days);
  std::vector<ListedSentence> ErrSentences(const std::vector<base::Day>& days);

  /// Flags the sentences of the days as deleted, those of essays too.
  void DeleteDays(const std::vector<base::Day>& days);
  /// Flags the sentences with these ids as deleted, whichever table they are in.
  void DeleteSentences(const std::vector<std::string>& ids);

 private:
  RecordDb& records_;
};

}  // namespace marovane
