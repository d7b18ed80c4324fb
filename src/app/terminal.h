// The terminal edition: the windows' controllers without windows.
#pragma once

#include <string>
#include <vector>

namespace marovane {

struct Composition;
struct TerminalCommand;

/// Runs a command of the terminal edition and returns its exit status: 0 right, 1 errors, 2 points to watch,
/// 3 no answer, 64 wrong usage, 74 records that cannot be used.
/// @param words the command line without the program's name
int RunTerminal(const std::vector<std::string>& words);

/// Runs a command that looks back on records and prints what it finds, fields separated by tabs.
/// @return the exit status
int RunRecordCommand(Composition& composition, const TerminalCommand& command);
/// Runs the commands `words` and `translate`, and prints what was found, one item a line.
/// @return the exit status: 0, or 3 when nothing was found
int RunWordCommand(Composition& composition, const TerminalCommand& command);
/// Runs the commands of essays. Corrections are read from standard input, one a line; an empty line or the
/// end of the input breaks off. Throws RunTimeError for a file that cannot be read, for a topic or an essay
/// that is not there, and for one that was handed in and is to be deleted.
/// @return the exit status: 0, 1 for a walk that the user broke off, 3 for a text that was refused or an
/// engine
///         that did not answer
int RunEssay(Composition& composition, const TerminalCommand& command);

}  // namespace marovane
