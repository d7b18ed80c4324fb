#include "tests/support/temp_home.h"

namespace marovane {

TempHome::TempHome() {
  for (const char* const folder : {"tmp", "config", "state", "data", "program", "helpers"}) {
    std::filesystem::create_directory(*this / folder);
  }
}

Environment TempHome::MakeEnvironment() const {
  Environment environment;
  environment.variables = {{"TMP", (*this / "tmp").string()},
                           {"HOME", Path().string()},
                           {"XDG_CONFIG_HOME", (*this / "config").string()},
                           {"XDG_STATE_HOME", (*this / "state").string()},
                           {"XDG_DATA_HOME", (*this / "data").string()}};
  environment.programFolder = *this / "program";
  environment.helperFolder = *this / "helpers";
  return environment;
}

}  // namespace marovane
