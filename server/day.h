// Today, in the server's time zone.
#pragma once

#include <string>

namespace marovane {

std::string TodayAsShown();  ///< "2026/11/5"
std::string TodayAsIso();    ///< "2026-11-05"

}  // namespace marovane
