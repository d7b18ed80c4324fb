#include "server/key_values.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "server/text.h"

namespace marovane {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const char* what, const fs::path& file) {
  throw std::system_error(errno, std::generic_category(), fmt::format("cannot {} {}", what, file.string()));
}

void MakePrivateFolder(const fs::path& folder) {
  if (folder.empty() || fs::is_directory(folder)) return;
  fs::create_directories(folder.parent_path());
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) Fail("make the folder", folder);
}

/// Writes all bytes and has them reach the disk.
bool WriteAll(int file, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t written = write(file, bytes.data() + done, bytes.size() - done);
    if (written < 0) return false;
    done += static_cast<std::size_t>(written);
  }
  return fsync(file) == 0;
}

void WritePrivately(const fs::path& path, const std::string& bytes) {
  unlink(path.c_str());
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) Fail("write", path);
  const bool written = WriteAll(file, bytes);
  close(file);
  if (!written) Fail("write", path);
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
    const std::string key = Trim(std::string_view(line).substr(0, equals));
    if (key.empty()) continue;
    values.lines_.emplace_back(key, Trim(std::string_view(line).substr(std::min(equals + 1, line.size()))));
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
  MakePrivateFolder(file.parent_path());
  const fs::path fresh = fmt::format("{}.{}.new", file.string(), getpid());
  WritePrivately(fresh, text);
  if (rename(fresh.c_str(), file.c_str()) != 0) Fail("replace", file);
}

}  // namespace marovane
