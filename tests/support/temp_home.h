// A home that vanishes with the test.
#pragma once

#include <filesystem>
#include <string>

#include "platform/environment.h"

namespace marovane {

/// A fresh folder with tmp/, config/, state/, data/, program/ and helpers/ in it.
class TempHome {
 public:
  TempHome();
  ~TempHome();
  TempHome(const TempHome&) = delete;
  TempHome& operator=(const TempHome&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  /// TMP, HOME and the XDG variables point into this home; so do the two folders of the program.
  Environment MakeEnvironment() const;

 private:
  std::filesystem::path path_;
};

}  // namespace marovane
