// The page of the diary's charts.
#pragma once

#include <string>

#include "views/charts.h"

namespace marovane {

/// All charts; a friendly picture when there is nothing to draw.
std::string ChartsPage(const Charts& charts);

}  // namespace marovane
