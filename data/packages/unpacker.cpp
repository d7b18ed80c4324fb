// Unpacks the files that stand behind its own bytes: NAME -d DIRECTORY. Nothing is written before the
// checksum was found right; each file is written beside its place and then renamed.
#include <fmt/format.h>
#include <sys/stat.h>

#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "base/posix_files.h"
#include "format.h"

namespace {

namespace fs = std::filesystem;

struct Entry {
  std::string name;
  bool keeps;
  std::string_view bytes;
};

std::size_t Number(std::string_view text, int base) {
  std::size_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (read.ec != std::errc{} || read.ptr != text.data() + text.size()) {
    throw std::runtime_error("the package is damaged");
  }
  return number;
}

std::string_view FilesPart(std::string_view package) {
  if (package.size() < kTrailer || !package.ends_with(kMagic))
    throw std::runtime_error("the package is damaged");
  const std::string_view trailer = package.substr(package.size() - kTrailer);
  const std::size_t length = Number(trailer.substr(base::Sha256::kSize, kLengthDigits), 16);
  if (length > package.size() - kTrailer) throw std::runtime_error("the package is damaged");
  const std::string_view files = package.substr(package.size() - kTrailer - length, length);
  base::Sha256 digest;
  digest.Add(files);
  if (digest.Bytes() != trailer.substr(0, base::Sha256::kSize)) {
    throw std::runtime_error("the package is damaged: wrong checksum");
  }
  return files;
}

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos) throw std::runtime_error("the package is damaged");
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end + 1);
  return line;
}

std::vector<Entry> Entries(std::string_view files) {
  std::vector<Entry> entries;
  while (!files.empty()) {
    const std::string name(TakeLine(files));
    const bool keeps = TakeLine(files) == "=";
    const std::size_t length = Number(TakeLine(files), 10);
    if (length > files.size()) throw std::runtime_error("the package is damaged");
    entries.push_back({name, keeps, files.substr(0, length)});
    files.remove_prefix(length);
  }
  return entries;
}

// A file that says the same already is left alone: most starts find nothing to do.
bool IsThere(const fs::path& path, const Entry& entry) {
  if (!fs::exists(path)) return false;
  return entry.keeps ||
         (fs::file_size(path) == entry.bytes.size() && base::PosixFiles().Read(path) == entry.bytes);
}

void Unpack(const std::vector<Entry>& entries, const fs::path& folder) {
  base::PosixFiles files;
  for (const Entry& entry : entries) {
    const fs::path path = folder / entry.name;
    if (IsThere(path, entry)) continue;
    files.CreateFolder(path.parent_path(), true);
    base::RewriteFile(files, path, entry.bytes, true);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 3 || std::string_view(argv[1]) != "-d") throw std::runtime_error("usage: -d DIRECTORY");
    umask(0077);
    std::signal(SIGXFSZ, SIG_IGN);  // a limit of the size of files is told like a full disk
    const std::string package = base::PosixFiles().Read("/proc/self/exe");
    Unpack(Entries(FilesPart(package)), argv[2]);
    return 0;
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}: {}\n", argv[0], error.what());
    return 1;
  }
}
