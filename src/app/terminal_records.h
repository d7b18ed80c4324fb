// The records at a terminal.
#pragma once

struct Composition;
struct TerminalCommand;

/// Runs a command that looks back on records and prints what it finds, fields parted by tabs.
/// @return the exit status
int RunRecordCommand(Composition& composition, const TerminalCommand& command);
