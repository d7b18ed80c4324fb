// The command line of the check program: "<level>,<run code>".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvex {

struct RunRequest {
  std::string level;
  bool essayMode = false;
};

/// Reads the argument. The run code is three two-digit numbers, the third being the sum of the first two;
/// a first number of 50 means a sentence of an essay. Empty when the argument has another form.
std::optional<RunRequest> ParseRunRequest(std::string_view argument);

}  // namespace tolvex
