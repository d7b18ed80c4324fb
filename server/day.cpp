#include "server/day.h"

#include <fmt/format.h>

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

}  // namespace marovane
