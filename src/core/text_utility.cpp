#include "core/text_utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/text.h"
#include "core/program.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

namespace marovane {

std::string MakeRecId(Program& program) { return program.app.gRecIds.Next(program.machine.loop.UtcNow()); }

std::string FormatNumber(std::int64_t number) {
  constexpr std::size_t kGroup = 3;
  std::string digits = fmt::format("{}", number);
  const std::size_t first = number < 0 ? 1 : 0;
  for (std::size_t at = digits.size(); at > first + kGroup;) {
    at -= kGroup;
    digits.insert(at, 1, ',');
  }
  return digits;
}

std::string DefaultEssayTitle(const std::string& title, base::LocalTime now) {
  return title.empty() ? "我的短文" + base::FormatDatePadded(base::DayOf(now), "") : title;
}

bool IsPlainAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char sign) { return sign >= 32 && sign <= 122; });
}

bool IsValidEmail(std::string_view text) {
  constexpr int kShortest = 6;
  if (base::Len(text) < kShortest) return false;
  const auto holdsInside = [text](char sign) {
    return text.find(sign) != std::string_view::npos && !text.starts_with(sign) && !text.ends_with(sign);
  };
  return holdsInside('@') && holdsInside('.');
}

int FilterKeyAscii(int keyAscii, std::string_view caseMode, bool allowBlank) {
  constexpr int kPaste = 22;
  const auto between = [keyAscii](char low, char high) { return keyAscii >= low && keyAscii <= high; };
  if (between('a', 'z')) return caseMode == "UPPER" ? keyAscii - 'a' + 'A' : keyAscii;
  if (between('A', 'Z')) return caseMode == "LOWER" ? keyAscii - 'A' + 'a' : keyAscii;
  const bool passes = keyAscii == 13 || keyAscii == 8 || between('0', '9') || keyAscii == '-' ||
                      keyAscii == '.' || keyAscii == '_' || keyAscii == kPaste ||
                      (keyAscii == ' ' && allowBlank);
  return passes ? keyAscii : 0;
}

int FilterEssayKeyCode(int keyCode) {
  constexpr std::array kSingles{13, 32, 46, 35, 190, 188, 189, 191, 36, 8, 222};
  const auto between = [keyCode](int low, int high) { return keyCode >= low && keyCode <= high; };
  const bool passes = std::ranges::find(kSingles, keyCode) != kSingles.end() || between(37, 40) ||
                      between('A', 'Z') || between('a', 'z') || between('0', '9');
  return passes ? keyCode : 0;
}

}  // namespace marovane
