#include "server/day.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <ctime>

namespace marovane {
namespace {

std::tm LocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  return parts;
}

}  // namespace

std::string TodayAsShown() {
  const std::tm day = LocalTime();
  return fmt::format("{}/{}/{}", day.tm_year + 1900, day.tm_mon + 1, day.tm_mday);
}

std::string TodayAsIso() {
  const std::tm day = LocalTime();
  return fmt::format("{}-{:02}-{:02}", day.tm_year + 1900, day.tm_mon + 1, day.tm_mday);
}

std::optional<std::string> IsoDay(std::string_view shown) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  const char* const end = shown.data() + shown.size();
  const auto take = [&](const char* from, auto& number) {
    const auto read = std::from_chars(from, end, number);
    return read.ec == std::errc{} && (read.ptr == end || *read.ptr == '/') ? read.ptr : nullptr;
  };
  const char* at = take(shown.data(), year);
  if (at != nullptr && at != end) at = take(at + 1, month);
  if (at != nullptr && at != end) at = take(at + 1, day);
  using namespace std::chrono;
  if (at != end || year < 1000 || year > 9999) return std::nullopt;
  if (!year_month_day{std::chrono::year{year}, std::chrono::month{month}, std::chrono::day{day}}.ok()) {
    return std::nullopt;
  }
  return fmt::format("{:04}-{:02}-{:02}", year, month, day);
}

std::string ShownDay(const std::string& iso) {
  if (iso.empty()) return "";
  const auto part = [&](std::size_t from) { return std::stoi(iso.substr(from, from == 0 ? 4 : 2)); };
  return fmt::format("{}/{}/{}", part(0), part(5), part(8));
}

}  // namespace marovane
