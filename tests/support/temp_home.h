// A home that vanishes with the test.
#pragma once

#include "platform/environment.h"
#include "tests/support/temp_folder.h"

namespace marovane {

/// A fresh folder with tmp/, config/, state/, data/, program/ and helpers/ in it.
class TempHome : public TempFolder {
 public:
  TempHome();

  /// TMP, HOME and the XDG variables point into this home; so do the two folders of the program.
  Environment MakeEnvironment() const;
};

}  // namespace marovane
