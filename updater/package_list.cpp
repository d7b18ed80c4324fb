#include "updater/package_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <set>

#include "base/text.h"
#include "updater/refusal.h"

namespace updater {

namespace {

constexpr std::string_view kHead = "marovane 1";
constexpr std::string_view kVersion = "version ";
constexpr std::size_t kDigestDigits = 64;
constexpr std::size_t kLongestPath = 200;
constexpr std::size_t kMostFiles = 20'000;
constexpr std::uint64_t kLongestFile = std::uint64_t{1} << 30;

[[noreturn]] void Fail() { throw Refusal("更新清單的內容不正確，沒有更新任何檔案。"); }

std::string_view PopUntil(std::string_view& text, char end) {
  const std::size_t at = text.find(end);
  if (at == std::string_view::npos) Fail();
  const std::string_view taken = text.substr(0, at);
  text.remove_prefix(at + 1);
  return taken;
}

bool IsDigest(std::string_view text) {
  return text.size() == kDigestDigits && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::uint64_t Length(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size() || number > kLongestFile) Fail();
  return number;
}

ListedFile ReadFile(std::string_view line) {
  const std::string_view kind = PopUntil(line, ' ');
  if (kind != "-" && kind != "x") Fail();
  ListedFile file;
  file.isProgram = kind == "x";
  file.length = Length(PopUntil(line, ' '));
  file.sha256 = PopUntil(line, ' ');
  file.path = line;
  if (!IsDigest(file.sha256) || !IsSafePath(file.path)) Fail();
  return file;
}

}  // namespace

std::uint64_t PackageList::Length() const {
  std::uint64_t length = 0;
  for (const auto& file : files) length += file.length;
  return length;
}

bool IsVersion(std::string_view version) {
  constexpr std::size_t kLongest = 32;
  return !version.empty() && version.size() <= kLongest && version.front() != '.' && version.back() != '.' &&
         version.find("..") == std::string_view::npos &&
         version.find_first_not_of("0123456789.") == std::string_view::npos;
}

bool IsSafePath(std::string_view path) {
  if (path.size() > kLongestPath || !(path.starts_with("bin/") || path.starts_with("share/"))) return false;
  const auto isControl = [](char sign) { return static_cast<unsigned char>(sign) < ' ' || sign == '\x7F'; };
  if (std::ranges::any_of(path, isControl)) return false;
  const auto leadsElsewhere = [](const auto& name) { return name.empty() || name == "." || name == ".."; };
  return std::ranges::none_of(base::Split(path, "/"), leadsElsewhere);
}

std::string WriteList(const PackageList& list) {
  std::string text = fmt::format("{}\n{}{}\n", kHead, kVersion, list.version);
  for (const auto& file : list.files) {
    text += fmt::format("{} {} {} {}\n", file.isProgram ? 'x' : '-', file.length, file.sha256, file.path);
  }
  return text;
}

PackageList ReadList(std::string_view text) {
  if (PopUntil(text, '\n') != kHead) Fail();
  const std::string_view version = PopUntil(text, '\n');
  if (!version.starts_with(kVersion)) Fail();
  PackageList list;
  list.version = version.substr(kVersion.size());
  if (!IsVersion(list.version)) Fail();
  std::set<std::string> paths;
  while (!text.empty()) {
    list.files.push_back(ReadFile(PopUntil(text, '\n')));
    if (!paths.insert(list.files.back().path).second || list.files.size() > kMostFiles) Fail();
  }
  if (list.files.empty()) Fail();
  return list;
}

}  // namespace updater
