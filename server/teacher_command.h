// The owner's commands about teachers: "marovane-server teacher …".
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace server {

struct TeacherCommand {
  enum class Action { kAdd, kPassword, kList };
  Action action = Action::kList;
  std::filesystem::path dataDir;  ///< of the server, which may be running
  std::string login;
  std::string name;
};

extern const char* const kTeacherUsage;

/// `words` after "teacher". Throws UsageError.
TeacherCommand ParseTeacherCommand(const std::vector<std::string>& words);

/// Reads a password from standard input, without echo from a terminal, where the action needs one. Throws
/// std::runtime_error with a readable text.
void RunTeacherCommand(const TeacherCommand& command);

}  // namespace server
