// The terminal edition: the windows' controllers without windows.
#pragma once

#include <string>
#include <vector>

namespace marovane {

/// Runs a command of the terminal edition and gives its exit status: 0 right, 1 errors, 2 points to watch, 3
/// no answer, 64 wrong usage.
/// @param words the command line without the program's name
int RunTerminal(const std::vector<std::string>& words);

}  // namespace marovane
