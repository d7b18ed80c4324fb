// The page of the diary's charts.
#pragma once

#include "base/html.h"
#include "views/charts.h"

namespace marovane {

/// All charts; a friendly picture when there is nothing to draw.
base::Html ChartsPage(const Charts& charts);

}  // namespace marovane
