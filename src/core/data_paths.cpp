#include "core/data_paths.h"

#include "platform/environment.h"

namespace marovane {

namespace {

// A folder of ours below one of the base folders of the desktop's convention.
std::string UserFolder(const Environment& environment, const char* variable, const char* belowHome) {
  const std::string base = environment.Variable(variable);
  return (base.empty() ? environment.Variable("HOME") + "/" + belowHome : base) + "/marovane";
}

}  // namespace

std::string AccountFile(const Environment& environment) {
  return UserFolder(environment, "XDG_CONFIG_HOME", ".config") + "/account.set";
}

std::string TraceFolder(const Environment& environment) {
  return UserFolder(environment, "XDG_STATE_HOME", ".local/state");
}

std::string WorkingRoot(const Environment& environment) {
  const std::string temporary = environment.Variable("TMP");
  return temporary.empty() ? UserFolder(environment, "XDG_DATA_HOME", ".local/share") : temporary;
}

}  // namespace marovane
