// What the program gets from outside: variables, and the places where it is.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace marovane {

/// Plain data, read once at the start.
struct Environment {
  std::map<std::string, std::string>
      variables;  ///< MAROVANE_HOME, TMP, HOME, XDG_DATA_HOME, XDG_CONFIG_HOME, XDG_STATE_HOME…
  std::filesystem::path programFolder;  ///< `App.Path`: the read-only files that came with the program
  std::filesystem::path helperFolder;   ///< the programs beside this one
  std::string commandLine;              ///< the edition word, or nothing
  bool previousInstance = false;        ///< `App.PrevInstance`: another one runs for this user

  /// "" for a variable that is not set.
  std::string Variable(const std::string& name) const {
    const auto found = variables.find(name);
    return found == variables.end() ? "" : found->second;
  }
};

}  // namespace marovane
