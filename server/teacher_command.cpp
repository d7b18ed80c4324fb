#include "server/teacher_command.h"

#include <fmt/format.h>

#include <map>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"
#include "protocol/account.h"
#include "server/accounts/password.h"
#include "server/command_line.h"
#include "server/owner_words.h"
#include "server/store/school_store.h"
#include "server/teacher/password_page.h"

namespace server {
namespace {

constexpr std::size_t kLongestTeacherName = 40;

using Action = TeacherCommand::Action;

/// What a word does, and how many more it needs.
std::pair<Action, std::size_t> ActionOf(const std::string& word) {
  static const std::map<std::string, std::pair<Action, std::size_t>> kActions = {
      {"add", {Action::kAdd, 2}}, {"password", {Action::kPassword, 1}}, {"list", {Action::kList, 0}}};
  const auto action = kActions.find(word);
  if (action == kActions.end()) throw UsageError(fmt::format("teacher: unknown word \"{}\"", word));
  return action->second;
}

std::string ReadTeacherPassword() {
  std::string password = ReadPassword();
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
  school.PutTeacher({command.login, command.name, HashPassword(ReadTeacherPassword())});
}

void ChangePassword(SchoolStore& school, const TeacherCommand& command) {
  auto teacher = school.FindTeacher(command.login);
  if (!teacher) throw std::runtime_error(fmt::format("there is no teacher \"{}\"", command.login));
  teacher->passwordHash = HashPassword(ReadTeacherPassword());
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
  OwnerWords read = ReadOwnerWords({words.begin() + 1, words.end()});
  std::vector<std::string>& names = read.names;
  if (names.size() != wanted) {
    throw UsageError(fmt::format("teacher {} needs {} more words", words[0], wanted));
  }
  names.resize(2);
  TeacherCommand command{action, read.dataDir, names[0], base::Trim(names[1], base::kWhiteSpace)};
  if (!command.login.empty() && !protocol::IsAccountNumber(command.login)) {
    throw UsageError("a login has 1 to 32 letters, digits, \".\" and \"_\"");
  }
  const std::size_t length = base::CountCharacters(command.name);
  const bool isName = base::IsCleanText(command.name) && length > 0 && length <= kLongestTeacherName;
  if (command.action == Action::kAdd && !isName) throw UsageError("a name has 1 to 40 characters of UTF-8");
  return command;
}

void RunTeacherCommand(const TeacherCommand& command) {
  const auto school = OpenSqliteSchoolStore(OwnersDatabase(command.dataDir));
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
