#include "server/teacher_command.h"

#include <fmt/format.h>
#include <termios.h>
#include <unistd.h>

#include <iostream>
#include <map>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"
#include "protocol/account.h"
#include "server/accounts/password.h"
#include "server/command_line.h"
#include "server/store/account_store.h"
#include "server/store/school_store.h"
#include "server/teacher/password_page.h"

namespace server {
namespace {

constexpr std::size_t kLongestName = 40;

using Action = TeacherCommand::Action;

/// What a word does, and how many more it needs.
std::pair<Action, std::size_t> ActionOf(const std::string& word) {
  static const std::map<std::string, std::pair<Action, std::size_t>> kActions = {
      {"add", {Action::kAdd, 2}}, {"password", {Action::kPassword, 1}}, {"list", {Action::kList, 0}}};
  const auto action = kActions.find(word);
  if (action == kActions.end()) throw UsageError(fmt::format("teacher: unknown word \"{}\"", word));
  return action->second;
}

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

std::string ReadPassword() {
  std::string password;
  {
    const SilentInput silent;
    std::getline(std::cin, password);
  }
  if (password.ends_with('\r')) password.pop_back();
  if (password.size() < kShortestTeacherPassword || password.size() > kLongestTeacherPassword) {
    throw std::runtime_error(fmt::format("the password, read from standard input, must have {} to {} bytes",
                                         kShortestTeacherPassword, kLongestTeacherPassword));
  }
  return password;
}

void Add(SchoolStore& school, const TeacherCommand& command) {
  if (school.FindTeacher(command.login)) {
    throw std::runtime_error(fmt::format("the teacher \"{}\" exists already", command.login));
  }
  school.PutTeacher({command.login, command.name, HashPassword(ReadPassword())});
}

void ChangePassword(SchoolStore& school, const TeacherCommand& command) {
  auto teacher = school.FindTeacher(command.login);
  if (!teacher) throw std::runtime_error(fmt::format("there is no teacher \"{}\"", command.login));
  teacher->passwordHash = HashPassword(ReadPassword());
  school.PutTeacher(*teacher);
}

void List(SchoolStore& school) {
  for (const Teacher& teacher : school.Teachers()) fmt::print("{}\t{}\n", teacher.login, teacher.name);
}

}  // namespace

const char* const kTeacherUsage =
    "       marovane-server teacher add LOGIN NAME --data FOLDER\n"
    "       marovane-server teacher password LOGIN --data FOLDER\n"
    "       marovane-server teacher list --data FOLDER\n";

TeacherCommand ParseTeacherCommand(const std::vector<std::string>& words) {
  if (words.empty()) throw UsageError("teacher: add, password or list is missing");
  const auto [action, wanted] = ActionOf(words[0]);
  TeacherCommand command{action, {}, {}, {}};
  std::vector<std::string> names;
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (words[i] != "--data") {
      names.push_back(words[i]);
    } else if (++i < words.size()) {
      command.dataDir = words[i];
    }
  }
  if (command.dataDir.empty()) throw UsageError("--data is missing");
  if (names.size() != wanted) {
    throw UsageError(fmt::format("teacher {} needs {} more words", words[0], wanted));
  }
  names.resize(2);
  command.login = names[0];
  command.name = base::Trim(names[1], base::kWhiteSpace);
  if (!command.login.empty() && !protocol::IsAccountNumber(command.login)) {
    throw UsageError("a login has 1 to 32 letters, digits, \".\" and \"_\"");
  }
  const std::size_t length = base::CountCharacters(command.name);
  const bool isName = base::IsCleanText(command.name) && length > 0 && length <= kLongestName;
  if (command.action == Action::kAdd && !isName) throw UsageError("a name has 1 to 40 characters of UTF-8");
  return command;
}

void RunTeacherCommand(const TeacherCommand& command) {
  if (!std::filesystem::is_directory(command.dataDir)) {
    throw std::runtime_error(fmt::format("there is no folder {}", command.dataDir.string()));
  }
  const auto file = command.dataDir / "server.db";
  OpenAccountStore(file);  // makes the tables when this comes before the first start
  const auto school = OpenSqliteSchoolStore(file);
  switch (command.action) {
    case Action::kAdd:
      return Add(*school, command);
    case Action::kPassword:
      return ChangePassword(*school, command);
    case Action::kList:
      return List(*school);
  }
}

}  // namespace server
