// Days of the calendar: ISO text (2026-11-05) in what is stored, and as learners see them (2026/11/5).
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace base {

using Day = std::chrono::year_month_day;
using LocalTime = std::chrono::local_seconds;
using UtcTime = std::chrono::sys_time<std::chrono::milliseconds>;

/// The clock of the machine, in its time zone.
LocalTime LocalNow();
Day DayOf(LocalTime time);
inline Day Today() { return DayOf(LocalNow()); }

/// Year, month and day without padding, as "2014/3/2".
std::string FormatDateUnpadded(Day day, std::string_view separator);
/// Year and two digits each of month and day, as "2014-03-02".
std::string FormatDatePadded(Day day, std::string_view separator);

/// Reads year, month and day parted by "/" or "-"; a blank and a time of day may follow. Nothing when the
/// text is no date of the years 1 to 9999.
std::optional<Day> ParseDate(std::string_view text);

std::string IsoDay(Day day);
/// The ISO text of "2026/11/5"; nothing for another writing of a day.
std::optional<std::string> IsoFromShown(std::string_view shown);

std::string ShownDay(Day day);
/// A stored day as it is shown. What is no day stays as it is.
std::string ShownDay(std::string_view stored);

}  // namespace base
