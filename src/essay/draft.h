// The text of an essay that was typed and not sent. It waits in a file for the next essay window.
#pragma once

#include <optional>
#include <string>

#include "base/files.h"

namespace marovane {

struct Program;

/// What one essay window holds, after an earlier text that waits already.
class Draft {
 public:
  /// Of the account that is logged in at this moment.
  explicit Draft(const Program& program);

  /// The text that waits; "" when there is none. What is kept from now on replaces it. Throws RunTimeError
  /// for a file that cannot be read, which then has another name and bars nothing any more.
  std::string Take();
  /// The text that was taken waits on, and what is kept from now on comes after it.
  void PutBack();
  /// Replaces what this window has kept before; "" gives it up. Throws RunTimeError; what waited waits
  /// on.
  void Keep(const std::string& text);

 private:
  std::string Read() const;

  base::Files& files_;
  base::Files::Path folder_, file_;
  std::optional<std::string> earlier_;  // once it was read
  std::string kept_;
};

}  // namespace marovane
