// The words after the program's name.
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "server/http/server.h"
#include "server/pupil_command.h"
#include "server/teacher_command.h"

namespace server {

/// The words make no command. Its text says which one.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Command {
  bool help = false;
  std::optional<TeacherCommand> teacher;  ///< instead of serving
  std::optional<PupilCommand> pupil;      ///< instead of serving
  bool embedded = false;                  ///< started by the desktop program, which holds standard input
  ServerOptions server;                   ///< for an embedded one with a fresh random prefix
  std::filesystem::path engineData;       ///< "" when not given
  std::filesystem::path accountFile;      ///< "" for none
};

extern const char* const kUsage;

/// `words` without the program's name. Throws UsageError.
Command ParseCommandLine(const std::vector<std::string>& words);

}  // namespace server
