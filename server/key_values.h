// Files of "key=value" lines, each ended by CR LF.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace marovane {

class KeyValues {
 public:
  /// Reads a file; one that does not exist is empty. Blanks around key and value do not count. Throws
  /// std::runtime_error when the file cannot be read.
  static KeyValues Read(const std::filesystem::path& file);

  /// "" for a missing key.
  std::string Get(const std::string& key) const;
  /// All keys and values, as they stand in the file.
  const std::vector<std::pair<std::string, std::string>>& Lines() const { return lines_; }
  /// A new key comes last; all other lines stay.
  void Set(const std::string& key, const std::string& value);

  /// Rewrites the file through a temporary one beside it, so that a kill leaves the old text or the new. The
  /// file is for its owner alone (0600), and so is its folder if it must be made (0700). Throws
  /// std::runtime_error.
  void Write(const std::filesystem::path& file) const;

 private:
  std::vector<std::pair<std::string, std::string>> lines_;
};

}  // namespace marovane
