// What happens to an error that no handler took.
#pragma once

#include <exception>

namespace marovane {

struct Program;

/// Has the event loop report every error that no handler took. Windows that the failed event has left
/// disabled or off the screen come back; those that were so when it began stay as they are.
void ReportUnhandledErrors(Program& program);

/// Writes the detail to `error.log` in the folder for traces, and shows message 404.
void ReportUnhandledError(Program& program, const std::exception& error);

}  // namespace marovane
