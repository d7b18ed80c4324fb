// The file that names the program's account on its own server.
#pragma once

#include <filesystem>
#include <string>

namespace server {

struct AccountEntry {
  std::string number;
  std::string password;
};

/// The account that the file names under `Pno` and `userPW`. What is missing is made and written to the file:
/// a number of ten digits, a password of twelve letters and digits. Called before the account is stored, so
/// that a kill in between leaves a file from which the next start goes on. Throws std::runtime_error when the
/// file cannot be read or written, or names no well-formed number.
AccountEntry EnsureAccountFile(const std::filesystem::path& file);

}  // namespace server
