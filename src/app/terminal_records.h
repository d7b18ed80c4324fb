// The records at a terminal.
#pragma once

namespace marovane {

struct Composition;
struct TerminalCommand;

/// Runs a command that looks back on records and prints what it finds, fields parted by tabs.
/// @return the exit status
int RunRecordCommand(Composition& composition, const TerminalCommand& command);

}  // namespace marovane
