// What the owner's commands share: "marovane-server teacher …" and "marovane-server pupil …".
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace server {

struct OwnerWords {
  std::vector<std::string> names;  ///< what the action is about
  std::filesystem::path dataDir;   ///< of the server, which may be running
};

/// Reads the words after an action: names, and "--data FOLDER" among them. Throws UsageError without a
/// folder.
OwnerWords ReadOwnerWords(const std::vector<std::string>& words);

/// The database of a data folder, its tables made when this comes before the server's first start. Throws
/// std::runtime_error with a readable text.
std::filesystem::path OwnersDatabase(const std::filesystem::path& dataDir);

/// Reads a line of standard input, without echo from a terminal.
std::string ReadPassword();

}  // namespace server
