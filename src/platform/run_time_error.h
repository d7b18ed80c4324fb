// Errors that procedures raise and may swallow, and the one signal that nothing swallows.
#pragma once

#include "base/error.h"

namespace marovane {

/// An error of a statement at run time: a file that cannot be opened, a failed transfer or query, an index
/// out of bounds. The text is meant for `error.log` and the detail line of a message.
using RunTimeError = base::Error;

/// The learner has broken off what was going on. Nobody needs to be told.
class BrokenOff : public RunTimeError {
 public:
  using RunTimeError::RunTimeError;
};

/// Ends the program: thrown by EventLoop::End and taken by nobody but the program's main procedure. It is no
/// std::exception on purpose, so that no error handler can take it.
struct ProgramEnd {};

}  // namespace marovane
