#include "server/key_values.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "base/posix_files.h"
#include "base/text.h"

namespace marovane {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const char* what, const fs::path& file) {
  throw std::system_error(errno, std::generic_category(), fmt::format("cannot {} {}", what, file.string()));
}

}  // namespace

KeyValues KeyValues::Read(const fs::path& file) {
  KeyValues values;
  std::error_code failure;
  if (!fs::exists(file, failure) && !failure) return values;
  std::ifstream in(file, std::ios::binary);
  if (!in) Fail("read", file);
  for (std::string line; std::getline(in, line);) {
    const std::size_t equals = std::min(line.find('='), line.size());
    const std::string key = base::Trim(std::string_view(line).substr(0, equals), base::kWhiteSpace);
    if (key.empty()) continue;
    values.lines_.emplace_back(
        key, base::Trim(std::string_view(line).substr(std::min(equals + 1, line.size())), base::kWhiteSpace));
  }
  return values;
}

std::string KeyValues::Get(const std::string& key) const {
  const auto line = std::find_if(lines_.begin(), lines_.end(), [&](auto& each) { return each.first == key; });
  return line == lines_.end() ? "" : line->second;
}

void KeyValues::Set(const std::string& key, const std::string& value) {
  const auto line = std::find_if(lines_.begin(), lines_.end(), [&](auto& each) { return each.first == key; });
  if (line == lines_.end()) {
    lines_.emplace_back(key, value);
  } else {
    line->second = value;
  }
}

void KeyValues::Write(const fs::path& file) const {
  std::string text;
  for (const auto& [key, value] : lines_) text += fmt::format("{}={}\r\n", key, value);
  base::PosixFiles files;
  files.CreateFolder(file.parent_path(), true);
  base::RewriteFile(files, file, text, true);
}

}  // namespace marovane
