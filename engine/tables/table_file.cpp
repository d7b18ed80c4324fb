#include "engine/tables/table_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <fstream>

#include "engine/tables/hash.h"

namespace tolvex {
namespace {

constexpr char kMagic[8] = {'T', 'V', 'X', 'T', 'A', 'B', '0', '1'};
constexpr std::size_t kAlignment = 16;

struct Header {
  char magic[8];
  std::uint64_t size;      // of the whole file
  std::uint64_t checksum;  // of everything after the header
  std::uint64_t sectionCount;
};

struct DirectoryEntry {
  char name[32];
  std::uint64_t offset;
  std::uint64_t size;
};

std::size_t Aligned(std::size_t size) { return (size + kAlignment - 1) / kAlignment * kAlignment; }

// Four independent lanes of eight bytes: fast enough to check some megabytes at every start.
std::uint64_t Checksum(std::span<const std::byte> bytes) {
  std::uint64_t lanes[4] = {1, 2, 3, 4};
  std::size_t at = 0;
  for (; at + 32 <= bytes.size(); at += 32) {
    for (std::size_t lane = 0; lane < 4; ++lane) {
      std::uint64_t word = 0;
      std::memcpy(&word, bytes.data() + at + lane * 8, 8);
      lanes[lane] = (lanes[lane] ^ word) * 0x9e3779b97f4a7c15ULL;
      lanes[lane] ^= lanes[lane] >> 29U;
    }
  }
  std::uint64_t tail = HashText({reinterpret_cast<const char*>(bytes.data()) + at, bytes.size() - at});
  for (const std::uint64_t lane : lanes) tail = HashPair(tail, lane);
  return tail;
}

[[noreturn]] void Damaged(const std::filesystem::path& path) {
  throw std::runtime_error("damaged language data: " + path.string());
}

}  // namespace

TableFile::TableFile(const std::filesystem::path& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) throw std::runtime_error("missing language data: " + path.string());
  struct stat info = {};
  const bool sized = fstat(file, &info) == 0 && info.st_size >= static_cast<off_t>(sizeof(Header));
  size_ = sized ? static_cast<std::size_t>(info.st_size) : 0;
  void* mapped = sized ? mmap(nullptr, size_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0) : MAP_FAILED;
  close(file);
  if (mapped == MAP_FAILED) Damaged(path);
  data_ = static_cast<const std::byte*>(mapped);
  try {
    ReadDirectory(path);
  } catch (...) {
    munmap(mapped, size_);
    throw;
  }
}

TableFile::~TableFile() { munmap(const_cast<std::byte*>(data_), size_); }

void TableFile::ReadDirectory(const std::filesystem::path& path) {
  Header header = {};
  std::memcpy(&header, data_, sizeof header);
  const std::size_t rest = size_ - sizeof header;
  if (std::memcmp(header.magic, kMagic, sizeof kMagic) != 0 || header.size != size_ ||
      header.sectionCount > rest / sizeof(DirectoryEntry) ||
      header.checksum != Checksum({data_ + sizeof header, rest})) {
    Damaged(path);
  }
  for (std::size_t i = 0; i < header.sectionCount; ++i) {
    DirectoryEntry entry = {};
    std::memcpy(&entry, data_ + sizeof header + i * sizeof entry, sizeof entry);
    if (entry.offset > size_ || entry.size > size_ - entry.offset) Damaged(path);
    const std::string name(entry.name, strnlen(entry.name, sizeof entry.name));
    sections_.emplace(name, std::span(data_ + entry.offset, entry.size));
  }
}

std::span<const std::byte> TableFile::Section(std::string_view name) const {
  const auto found = sections_.find(name);
  if (found == sections_.end())
    throw std::runtime_error("language data lacks the table " + std::string(name));
  return found->second;
}

std::string_view TableFile::Text(std::string_view name) const {
  const auto bytes = Section(name);
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void TableWriter::AddBytes(const std::string& name, std::span<const std::byte> bytes) {
  sections_[name].assign(bytes.begin(), bytes.end());
}

void TableWriter::AddText(const std::string& name, std::string_view text) {
  AddBytes(name, std::as_bytes(std::span(text.data(), text.size())));
}

void TableWriter::Write(const std::filesystem::path& path) const {
  std::string body(sections_.size() * sizeof(DirectoryEntry), '\0');
  std::size_t entryAt = 0;
  for (const auto& [name, bytes] : sections_) {
    body.resize(Aligned(sizeof(Header) + body.size()) - sizeof(Header));
    DirectoryEntry entry = {{}, sizeof(Header) + body.size(), bytes.size()};
    name.copy(entry.name, sizeof entry.name);
    std::memcpy(body.data() + entryAt, &entry, sizeof entry);
    entryAt += sizeof entry;
    body.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  }
  Header header = {{},
                   sizeof(Header) + body.size(),
                   Checksum(std::as_bytes(std::span<const char>(body))),
                   sections_.size()};
  std::memcpy(header.magic, kMagic, sizeof kMagic);
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&header), sizeof header);
  out.write(body.data(), static_cast<std::streamsize>(body.size()));
  if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace tolvex
