// Days, in the server's time zone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace marovane {

std::string TodayAsShown();  ///< "2026/11/5"
std::string TodayAsIso();    ///< "2026-11-05"

/// "2026/11/5" as ISO text; nothing when it is no date.
std::optional<std::string> IsoDay(std::string_view shown);

/// ISO text as the program shows days; "" for "".
std::string ShownDay(const std::string& iso);

}  // namespace marovane
