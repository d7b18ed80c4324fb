#include "engine/program/registry_file.h"

#include <fmt/format.h>
#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/posix_files.h"
#include "base/text.h"
#include "engine/tolvex.h"

namespace tolvex {
namespace {

std::string_view KeyOf(std::string_view line) { return base::Trimmed(line.substr(0, line.find('='))); }

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!base::Trimmed(line).empty()) lines.emplace_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

[[noreturn]] void Fail(const char* what, const std::filesystem::path& path) {
  throw std::runtime_error(fmt::format("{} {}: {}", what, path.string(), std::strerror(errno)));
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

std::filesystem::path WriteFresh(std::string_view ending, std::string_view bytes) {
  const std::filesystem::path path = std::filesystem::current_path() / fmt::format("tmpXXXXXX{}", ending);
  std::string name = path.string();
  const base::FileDescriptor file(mkstemps(name.data(), static_cast<int>(ending.size())));
  if (!file.IsOpen()) throw base::FileError("create", path, errno);
  base::PosixFiles().Write(name, bytes, true);
  return name;
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
      return FromCp950(base::Trimmed(std::string_view(line).substr(equals + 1)));
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
  base::PosixFiles files;
  base::RewriteFile(files, path_, bytes, true);
}

}  // namespace tolvex
