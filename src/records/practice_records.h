// Practice over time: what the charts are drawn from.
#pragma once

#include <string>
#include <vector>

#include "base/day.h"
#include "records/day_records.h"

namespace marovane {

struct PracticeDay {
  base::Day day;
  int right = 0;
  int faulty = 0;
};

struct ErrorTally {
  std::string errcode;
  int count = 0;
};

/// One query each. All count the sentences that are not deleted, also those of essays. A day is the local day
/// on which a sentence was recorded. Every procedure throws RunTimeError.
class PracticeRecords {
 public:
  explicit PracticeRecords(RecordDb& records) : records_(records) {}

  /// The days with sentences from the first to the last given, in order.
  std::vector<PracticeDay> DaysWithin(base::Day first, base::Day last);
  /// The most frequent codes, the most frequent first; sentences without a code are left out.
  std::vector<ErrorTally> MostFrequentErrors(int limit);
  /// Length of the run of days with sentences that ends today, or yesterday as long as today has none.
  int RunOfDays(base::Day today);

 private:
  RecordDb& records_;
};

}  // namespace marovane
