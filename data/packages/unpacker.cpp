// Unpacks the files that stand behind its own bytes: NAME -d DIRECTORY. Nothing is written before the
// checksum was found right; each file is written beside its place and then renamed.
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

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
  const std::size_t length = Number(trailer.substr(crypto_hash_sha256_BYTES, kLengthDigits), 16);
  if (length > package.size() - kTrailer) throw std::runtime_error("the package is damaged");
  const std::string_view files = package.substr(package.size() - kTrailer - length, length);
  if (Sha256(files) != trailer.substr(0, crypto_hash_sha256_BYTES)) {
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

[[noreturn]] void Fail(const fs::path& path) {
  throw std::runtime_error(fmt::format("{}: {}", path.string(), std::generic_category().message(errno)));
}

void WriteAll(int file, std::string_view bytes, const fs::path& path) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) Fail(path);
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void WriteBeside(const fs::path& path, std::string_view bytes) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file < 0) Fail(path);
  try {
    WriteAll(file, bytes, path);
    if (fsync(file) < 0) Fail(path);
  } catch (...) {
    close(file);
    unlink(path.c_str());
    throw;
  }
  close(file);
}

// A file that says the same already is left alone: most starts find nothing to do.
bool IsThere(const fs::path& path, const Entry& entry) {
  if (!fs::exists(path)) return false;
  return entry.keeps || (fs::file_size(path) == entry.bytes.size() && ReadWhole(path) == entry.bytes);
}

void Unpack(const std::vector<Entry>& entries, const fs::path& folder) {
  for (const Entry& entry : entries) {
    const fs::path path = folder / entry.name;
    if (IsThere(path, entry)) continue;
    fs::create_directories(path.parent_path());
    fs::path fresh = path;
    fresh += ".new";
    WriteBeside(fresh, entry.bytes);
    fs::rename(fresh, path);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc != 3 || std::string_view(argv[1]) != "-d") throw std::runtime_error("usage: -d DIRECTORY");
    umask(0077);
    std::signal(SIGXFSZ, SIG_IGN);  // a limit of the size of files is told like a full disk
    const std::string package = ReadWhole("/proc/self/exe");
    Unpack(Entries(FilesPart(package)), argv[2]);
    return 0;
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}: {}\n", argv[0], error.what());
    return 1;
  }
}
