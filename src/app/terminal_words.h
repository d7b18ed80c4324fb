// The word helper at a terminal.
#pragma once

namespace marovane {

struct Composition;
struct TerminalCommand;

/// Runs the commands `words` and `translate`, and prints what was found, one item a line.
/// @return the exit status: 0, or 3 when nothing was found
int RunWordCommand(Composition& composition, const TerminalCommand& command);

}  // namespace marovane
