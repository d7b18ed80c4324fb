// What happens to an error that no handler took.
#pragma once

#include <exception>

struct Program;

/// Brings back windows that the failed event left disabled or off the screen, writes the detail to
/// `error.log` in the folder for traces, and tells the user by message 404.
void ReportUnhandledError(Program& program, const std::exception& error);
