// What the charts of the diary show, before anything is drawn.
#pragma once

#include <string>
#include <vector>

#include "base/day.h"
#include "records/practice_records.h"

namespace marovane {

class ErrListDb;

struct FrequentError {
  std::string outline;
  int count = 0;
};

struct Charts {
  std::vector<PracticeDay> days;   ///< each of the last six weeks' days, the days off too
  std::vector<PracticeDay> weeks;  ///< each of the last 26 weeks, named by its Monday
  std::vector<FrequentError> errors;
  int runOfDays = 0;

  bool IsEmpty() const;
};

/// Puts a row for each step of days from the first to the last one and adds up what falls into it.
/// @param found in order of days, none before the first
std::vector<PracticeDay> Spread(const std::vector<PracticeDay>& found, base::Day first, base::Day last,
                                int stepDays);

/// The Monday of a day's week.
base::Day MondayOf(base::Day day);

/// Throws RunTimeError.
Charts CollectCharts(RecordDb& records, ErrListDb& errList, base::Day today);

}  // namespace marovane
