// The page of the diary: one row a day.
#pragma once

#include <string>
#include <vector>

#include "records/day_records.h"

namespace marovane {

/// A table with a box for each day; the value of a box is its day, as "2026/11/5".
std::string DiaryPage(const std::vector<DiaryDay>& days);

}  // namespace marovane
