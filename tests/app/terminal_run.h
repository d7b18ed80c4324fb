// The terminal edition as a process of its own.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "base/process.h"
#include "tests/support/temp_home.h"

namespace marovane {

/// Runs the program in a home with these words, this text on its standard input, and no other environment
/// than the home and these variables ("NAME=value"). Returns when it and every process that it started and
/// that can still write to its standard error have ended. Another exit status than the one wanted is a
/// failure of the test, and so is a server or an engine that is left.
base::RunResult RunTerminalProgram(const TempHome& home, int status, const std::vector<std::string>& words,
                                   const std::string& input = "",
                                   const std::vector<std::string>& variables = {});

}  // namespace marovane
