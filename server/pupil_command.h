// The owner's commands about pupils: "marovane-server pupil …".
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace server {

struct PupilCommand {
  enum class Action { kPassword, kComputers, kForget };
  Action action = Action::kComputers;
  std::filesystem::path dataDir;  ///< of the server, which may be running
  std::string account;            ///< cleaned
};

extern const char* const kPupilUsage;

/// `words` after "pupil". Throws UsageError.
PupilCommand ParsePupilCommand(const std::vector<std::string>& words);

/// Reads a password from standard input, without echo from a terminal, where the action needs one. Throws
/// std::runtime_error with a readable text.
void RunPupilCommand(const PupilCommand& command);

}  // namespace server
