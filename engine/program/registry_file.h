// The exchange file of the check program: key=value lines in CP950, ended by CR LF.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvex {

/// The lines of one exchange file. Values are UTF-8 in memory and CP950 on disk.
class RegistryFile {
 public:
  /// Reads the file. Throws std::runtime_error when it cannot be read.
  explicit RegistryFile(std::filesystem::path path);

  /// The whole text behind the first "=" of the first line with this key, trimmed of blanks.
  std::optional<std::string> Value(std::string_view key) const;

  /// Sets the first line with this key, or adds one.
  void Set(std::string_view key, std::string_view value);

  /// Puts the new file in place of the old one in one step. Throws std::runtime_error on failure.
  void Write() const;

 private:
  std::filesystem::path path_;
  std::vector<std::string> lines_;
};

/// Writes a file under a fresh name in the working directory. Throws base::Error.
std::filesystem::path WriteFresh(std::string_view ending, std::string_view bytes);

/// Text in CP950 as UTF-8; bytes that are no CP950 text come back unchanged.
std::string FromCp950(std::string_view bytes);

}  // namespace tolvex
