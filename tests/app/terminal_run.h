// The terminal edition as a process of its own.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/process.h"

namespace marovane {

/// Runs the program with these words, this text on its standard input, and no other environment than this.
/// Returns when it and every process that it started and that can still write to its standard error have
/// ended.
base::RunResult RunTerminalProgram(const std::vector<std::string>& words, const std::string& input,
                                   const std::map<std::string, std::string>& environment);

/// Command lines of the running processes that name a path.
std::vector<std::string> ProcessesThatName(const std::string& path);

}  // namespace marovane
