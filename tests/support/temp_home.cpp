#include "tests/support/temp_home.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace marovane {

namespace fs = std::filesystem;

TempHome::TempHome() {
  std::string name = (fs::temp_directory_path() / "marovane-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
  path_ = name;
  for (const char* const folder : {"tmp", "config", "state", "data", "program", "helpers"}) {
    fs::create_directory(path_ / folder);
  }
}

TempHome::~TempHome() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

Environment TempHome::MakeEnvironment() const {
  Environment environment;
  environment.variables = {{"TMP", (path_ / "tmp").string()},
                           {"HOME", path_.string()},
                           {"XDG_CONFIG_HOME", (path_ / "config").string()},
                           {"XDG_STATE_HOME", (path_ / "state").string()},
                           {"XDG_DATA_HOME", (path_ / "data").string()}};
  environment.programFolder = path_ / "program";
  environment.helperFolder = path_ / "helpers";
  return environment;
}

}  // namespace marovane
