// One file of compiled tables, mapped into memory: named sections of plain structs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tolvex {

/// A mapped table file. The spans that it returns live as long as it does.
class TableFile {
 public:
  /// Maps the file and checks its length and checksum. Throws std::runtime_error with the path when it is
  /// missing or damaged.
  explicit TableFile(const std::filesystem::path& path);
  ~TableFile();
  TableFile(const TableFile&) = delete;
  TableFile& operator=(const TableFile&) = delete;

  /// The bytes of a section. Throws std::runtime_error when there is none of this name.
  std::span<const std::byte> Section(std::string_view name) const;

  /// A section as an array of T, which must be a plain struct.
  template <class T>
  std::span<const T> Array(std::string_view name) const {
    const auto bytes = Section(name);
    if (bytes.size() % sizeof(T) != 0) throw std::runtime_error("damaged table " + std::string(name));
    return {reinterpret_cast<const T*>(bytes.data()), bytes.size() / sizeof(T)};
  }

  std::string_view Text(std::string_view name) const;

  const std::map<std::string, std::span<const std::byte>, std::less<>>& Sections() const { return sections_; }

 private:
  void ReadDirectory(const std::filesystem::path& path);

  const std::byte* data_ = nullptr;
  std::size_t size_ = 0;
  std::map<std::string, std::span<const std::byte>, std::less<>> sections_;
};

/// Collects sections and writes a table file. The same sections give the same bytes.
class TableWriter {
 public:
  void AddBytes(const std::string& name, std::span<const std::byte> bytes);
  void AddText(const std::string& name, std::string_view text);

  template <class T>
  void AddArray(const std::string& name, const std::vector<T>& items) {
    AddBytes(name, std::as_bytes(std::span<const T>(items)));
  }

  /// Throws std::runtime_error when the file cannot be written.
  void Write(const std::filesystem::path& path) const;

 private:
  std::map<std::string, std::vector<std::byte>> sections_;
};

}  // namespace tolvex
