#include "core/text_utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "core/app_state.h"
#include "platform/text_encoding.h"

using std::chrono::year_month_day;

std::string Trim(std::string_view text) {
  const auto begin = text.find_first_not_of(' ');
  if (begin == std::string_view::npos) return "";
  return std::string(text.substr(begin, text.find_last_not_of(' ') - begin + 1));
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t at = 0;
  for (auto found = text.find(from); found != std::string_view::npos; found = text.find(from, at)) {
    result.append(text.substr(at, found - at)).append(to);
    at = found + from.size();
  }
  return result.append(text.substr(at));
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  while (true) {
    const auto end = text.find(separator);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + separator.size());
  }
}

int Len(std::string_view text) { return static_cast<int>(ToUtf16(text).size()); }

std::string Mid(std::string_view text, int start, int length) {
  const auto units = ToUtf16(text);
  const auto from = static_cast<std::size_t>(std::max(start, 1) - 1);
  if (from >= units.size() || length <= 0) return "";
  return ToUtf8(std::u16string_view(units).substr(from, static_cast<std::size_t>(length)));
}

std::string MakeRecId(AppState& app, LocalTime now) {
  using std::chrono::local_days;
  constexpr LocalTime kEpoch = local_days{std::chrono::year{2006} / 1 / 1};
  constexpr int kLastSequence = 12800;
  if (++app.gRecSeq >= kLastSequence) app.gRecSeq = 1;
  return fmt::format("{}{:05}", (now - kEpoch).count(), app.gRecSeq);
}

year_month_day DayOf(LocalTime time) { return year_month_day{std::chrono::floor<std::chrono::days>(time)}; }

std::string FormatDateUnpadded(year_month_day date, std::string_view separator) {
  return fmt::format("{0}{3}{1}{3}{2}", int{date.year()}, unsigned{date.month()}, unsigned{date.day()},
                     separator);
}

std::string FormatDatePadded(year_month_day date, std::string_view separator) {
  return fmt::format("{0}{3}{1:02}{3}{2:02}", int{date.year()}, unsigned{date.month()}, unsigned{date.day()},
                     separator);
}

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

bool ParseDate(std::string_view text, year_month_day& date) {
  std::array<int, 3> numbers{};
  const char* at = text.data();
  const char* const end = text.data() + text.size();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) {
      if (at == end || (*at != '/' && *at != '-')) return false;
      ++at;
    }
    const auto [next, error] = std::from_chars(at, end, numbers[i]);
    if (error != std::errc{}) return false;
    at = next;
  }
  if (at != end && *at != ' ') return false;  // a time of day may follow
  const year_month_day parsed{std::chrono::year{numbers[0]},
                              std::chrono::month{static_cast<unsigned>(numbers[1])},
                              std::chrono::day{static_cast<unsigned>(numbers[2])}};
  if (!parsed.ok()) return false;
  date = parsed;
  return true;
}

std::string DefaultEssayTitle(const std::string& title, LocalTime now) {
  return title.empty() ? "我的短文" + FormatDatePadded(DayOf(now), "") : title;
}

std::string EngineReplyCode(std::string_view reply) {
  const std::string plain = Replace(reply, "!", "");
  return Mid(Trim(std::string_view(plain).substr(0, plain.find('#'))), 1, 6);
}

std::string WithPlainSigns(std::string text) {
  for (const auto& [from, to] : {std::pair{"’", "'"}, {"，", ","}, {"．", "."}, {"  ", " "}}) {
    text = Replace(text, from, to);
  }
  return text;
}

bool IsPlainAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char sign) { return sign >= 32 && sign <= 122; });
}

bool IsValidEmail(std::string_view text) {
  constexpr int kShortest = 6;
  if (Len(text) < kShortest) return false;
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

std::string CleanAccountNo(std::string_view account) { return Replace(Replace(account, "-", ""), " ", ""); }
