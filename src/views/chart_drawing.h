// The page of the diary's charts, and single charts as inline SVG, from rows that are ready to draw.
#pragma once

#include <vector>

#include "base/html.h"
#include "views/charts.h"

namespace marovane {

inline constexpr const char* kRightColor = "#99CC00";
inline constexpr const char* kFaultyColor = "#FF3C3C";
inline constexpr const char* kLineColor = "#FFCC00";

/// The top of a scale that holds a count: at least 4, and 1, 2, 4, 6 or 10 times a power of ten, so that its
/// half is a whole number too.
int ScaleTop(int count);

/// Right sentences in 100, rounded; 0 without sentences.
int RightShare(const PracticeDay& entry);

/// Bars of right and faulty sentences, one a row, with the Mondays named below.
base::Html DayBars(const std::vector<PracticeDay>& days);
/// The share of right sentences as a line that is broken where a week has none.
base::Html ShareLine(const std::vector<PracticeDay>& weeks);
/// One bar each, with the text above it and the count after it.
base::Html ErrorBars(const std::vector<FrequentError>& errors);
/// A picture in place of charts.
base::Html EmptyPicture();

/// All charts; a friendly picture when there is nothing to draw.
base::Html ChartsPage(const Charts& charts);

}  // namespace marovane
