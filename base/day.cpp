#include "base/day.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <ctime>

namespace base {

LocalTime LocalNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return LocalTime{std::chrono::seconds{timegm(&local)}};
}

Day DayOf(LocalTime time) { return Day{std::chrono::floor<std::chrono::days>(time)}; }

std::string FormatDateUnpadded(Day day, std::string_view separator) {
  return fmt::format("{0}{3}{1}{3}{2}", int{day.year()}, unsigned{day.month()}, unsigned{day.day()},
                     separator);
}

std::string FormatDatePadded(Day day, std::string_view separator) {
  return fmt::format("{0}{3}{1:02}{3}{2:02}", int{day.year()}, unsigned{day.month()}, unsigned{day.day()},
                     separator);
}

std::optional<Day> ParseDate(std::string_view text) {
  // The calendar's own types keep only the low bits of a larger number.
  constexpr std::array<int, 3> kMost{9999, 12, 31};
  std::array<int, 3> numbers{};
  const char* at = text.data();
  const char* const end = text.data() + text.size();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0 && (at == end || (*at != '/' && *at != '-'))) return std::nullopt;
    const auto [next, error] = std::from_chars(i > 0 ? at + 1 : at, end, numbers[i]);
    if (error != std::errc{} || numbers[i] < 1 || numbers[i] > kMost[i]) return std::nullopt;
    at = next;
  }
  if (at != end && *at != ' ') return std::nullopt;
  const Day day{std::chrono::year{numbers[0]}, std::chrono::month{static_cast<unsigned>(numbers[1])},
                std::chrono::day{static_cast<unsigned>(numbers[2])}};
  return day.ok() ? std::optional(day) : std::nullopt;
}

std::string IsoDay(Day day) { return FormatDatePadded(day, "-"); }

std::optional<std::string> IsoFromShown(std::string_view shown) {
  constexpr int kFirstYear = 1000;
  const bool isPlain = shown.find_first_not_of("0123456789/") == std::string_view::npos;
  const auto day = isPlain ? ParseDate(shown) : std::nullopt;
  return day && int{day->year()} >= kFirstYear ? std::optional(IsoDay(*day)) : std::nullopt;
}

std::string ShownDay(Day day) { return FormatDateUnpadded(day, "/"); }

std::string ShownDay(std::string_view stored) {
  const auto day = ParseDate(stored);
  return day ? ShownDay(*day) : std::string(stored);
}

}  // namespace base
