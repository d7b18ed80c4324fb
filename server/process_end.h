// How long the process lives.
#pragma once

namespace server {

/// Holds SIGTERM and SIGINT back, in this thread and all that it starts. To be called before any other thread
/// runs.
void HoldEndSignals();

/// Asks the system to end this process with the one that started it.
void EndWithParent();

/// Returns at SIGTERM or SIGINT, and when `watchInput` also at the end of standard input, whose other end the
/// starting program holds: it closes however that program ends.
void WaitForEnd(bool watchInput);

}  // namespace server
