// Programs that are started.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

struct ChildResult {
  int status = 0;  ///< exit status; 128 and the signal when one ended it
  std::string output;
};

/// Runs a program to its end and reads its output. Nothing when it could not be started or did not end in
/// time; it is then ended, with what it has started.
/// @param environment "NAME=value"; all that it gets
std::optional<ChildResult> RunToEnd(const std::vector<std::string>& words,
                                    const std::vector<std::string>& environment,
                                    std::chrono::milliseconds patience);

/// Starts a program of its own and watches how it begins. False when it could not be started or failed within
/// that time.
bool StartsWell(const std::vector<std::string>& words, std::chrono::milliseconds watched);
