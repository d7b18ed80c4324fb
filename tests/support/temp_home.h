// A home that vanishes with the test.
#pragma once

#include "platform/environment.h"
#include "tests/support/temp_folder.h"

namespace marovane {

/// A fresh folder with tmp/, config/, state/, data/, program/ and helpers/ in it.
class TempHome : public TempFolder {
 public:
  TempHome() {
    for (const char* const folder : {"tmp", "config", "state", "data", "program", "helpers"}) {
      std::filesystem::create_directory(*this / folder);
    }
  }

  /// MAROVANE_HOME, HOME and the XDG variables point into this home; so do the two folders of the program.
  Environment MakeEnvironment() const {
    Environment environment;
    environment.variables = {{"MAROVANE_HOME", (*this / "tmp").string()},
                             {"HOME", Path().string()},
                             {"XDG_CONFIG_HOME", (*this / "config").string()},
                             {"XDG_STATE_HOME", (*this / "state").string()},
                             {"XDG_DATA_HOME", (*this / "data").string()}};
    environment.programFolder = *this / "program";
    environment.helperFolder = *this / "helpers";
    return environment;
  }
};

}  // namespace marovane
