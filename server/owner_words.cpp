#include "server/owner_words.h"

#include <fmt/format.h>
#include <termios.h>
#include <unistd.h>

#include <iostream>
#include <stdexcept>

#include "server/command_line.h"
#include "server/services/data_folder.h"
#include "server/store/account_store.h"

namespace server {
namespace {

/// Holds back the echo of the terminal, if standard input is one.
class SilentInput {
 public:
  SilentInput() : isTerminal_(tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!isTerminal_) return;
    fmt::print(stderr, "Password: ");
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
  }
  ~SilentInput() {
    if (!isTerminal_) return;
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    fmt::print(stderr, "\n");
  }
  SilentInput(const SilentInput&) = delete;
  SilentInput& operator=(const SilentInput&) = delete;

 private:
  termios before_{};
  bool isTerminal_;
};

}  // namespace

OwnerWords ReadOwnerWords(const std::vector<std::string>& words) {
  OwnerWords read;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] != "--data") {
      read.names.push_back(words[i]);
    } else if (++i < words.size()) {
      read.dataDir = words[i];
    }
  }
  if (read.dataDir.empty()) throw UsageError("--data is missing");
  return read;
}

std::filesystem::path OwnersDatabase(const std::filesystem::path& dataDir) {
  if (!std::filesystem::is_directory(dataDir)) {
    throw std::runtime_error(fmt::format("there is no folder {}", dataDir.string()));
  }
  ProtectNewSchool(dataDir);
  auto file = dataDir / "server.db";
  OpenAccountStore(file);
  return file;
}

std::string ReadPassword() {
  std::string password;
  {
    const SilentInput silent;
    std::getline(std::cin, password);
  }
  if (password.ends_with('\r')) password.pop_back();
  return password;
}

}  // namespace server
