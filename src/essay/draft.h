// The text of an essay that was typed and not sent. It waits in a file for the next essay window.
#pragma once

#include <optional>
#include <string>

#include "base/files.h"

namespace marovane {

struct Program;

/// What one essay window holds, behind an earlier text that waits already.
class Draft {
 public:
  /// Of the account that is logged in at this moment.
  explicit Draft(const Program& program);

  /// The text that waits; "" when there is none. What is kept from now on replaces it. Throws RunTimeError.
  std::string Take();
  /// The text that was taken waits on, and what is kept from now on comes behind it.
  void PutBack();
  /// Replaces what this window has kept before; "" gives it up. Throws RunTimeError, and then everything is
  /// as it was.
  void Keep(const std::string& text);

 private:
  base::Files& files_;
  base::Files::Path folder_, file_;
  std::optional<std::string> earlier_;  // once it was read
  std::string kept_;
};

}  // namespace marovane
