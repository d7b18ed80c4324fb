#include "engine/program/registry_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <iconv.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "engine/tolvex.h"

namespace tolvex {
namespace {

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view KeyOf(std::string_view line) { return Trimmed(line.substr(0, line.find('='))); }

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!Trimmed(line).empty()) lines.emplace_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

[[noreturn]] void Fail(const char* what, const std::filesystem::path& path) {
  throw std::runtime_error(fmt::format("{} {}: {}", what, path.string(), std::strerror(errno)));
}

void WriteAll(int file, std::string_view bytes, const std::filesystem::path& path) {
  while (!bytes.empty()) {
    const auto written = write(file, bytes.data(), bytes.size());
    if (written < 0) Fail("cannot write", path);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  if (fsync(file) != 0) Fail("cannot write", path);
}

}  // namespace

std::string FromCp950(std::string_view bytes) {
  iconv_t handle = iconv_open("UTF-8", "CP950");
  if (handle == reinterpret_cast<iconv_t>(-1)) return std::string(bytes);
  std::string in(bytes);
  std::string out(bytes.size() * 3 + 4, '\0');
  char* from = in.data();
  char* to = out.data();
  std::size_t inLeft = in.size();
  std::size_t outLeft = out.size();
  const bool ok = iconv(handle, &from, &inLeft, &to, &outLeft) != static_cast<std::size_t>(-1);
  iconv_close(handle);
  return ok ? out.substr(0, out.size() - outLeft) : in;
}

void WriteWhole(const std::filesystem::path& path, std::string_view bytes) {
  std::string temporary = path.string() + ".XXXXXX";
  const int file = mkstemp(temporary.data());
  if (file < 0) Fail("cannot create a file beside", path);
  try {
    WriteAll(file, bytes, path);
  } catch (...) {
    close(file);
    unlink(temporary.c_str());
    throw;
  }
  close(file);
  if (std::rename(temporary.c_str(), path.c_str()) != 0) {
    unlink(temporary.c_str());
    Fail("cannot replace", path);
  }
}

RegistryFile::RegistryFile(std::filesystem::path path) : path_(std::move(path)) {
  std::ifstream in(path_, std::ios::binary);
  if (!in) Fail("cannot read", path_);
  lines_ = SplitLines(std::string(std::istreambuf_iterator<char>(in), {}));
}

std::optional<std::string> RegistryFile::Value(std::string_view key) const {
  for (const std::string& line : lines_) {
    const auto equals = line.find('=');
    if (equals != std::string::npos && KeyOf(line) == key) {
      return FromCp950(Trimmed(std::string_view(line).substr(equals + 1)));
    }
  }
  return std::nullopt;
}

void RegistryFile::Set(std::string_view key, std::string_view value) {
  const std::string line = fmt::format("{}={}", key, PageInBig5(value));
  const auto old = std::find_if(lines_.begin(), lines_.end(), [&](const auto& l) { return KeyOf(l) == key; });
  if (old == lines_.end()) {
    lines_.push_back(line);
  } else {
    *old = line;
  }
}

void RegistryFile::Write() const {
  std::string bytes;
  for (const std::string& line : lines_) bytes += line + "\r\n";
  WriteWhole(path_, bytes);
}

}  // namespace tolvex
