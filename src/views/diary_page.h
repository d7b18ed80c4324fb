// The page of the diary: one row a day.
#pragma once

#include <vector>

#include "base/html.h"
#include "records/day_records.h"

namespace marovane {

/// A table with a box for each day; the value of a box is its day, as "2026/11/5".
base::Html DiaryPage(const std::vector<DiaryDay>& days);

}  // namespace marovane
