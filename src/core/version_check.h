// Is there a newer version, and does the user want it?
#pragma once

#include <string>

namespace marovane {

struct Program;

/// The server's newest version.
/// @param type "mrv" for one that the updater brings, "big" for one that needs a new installation
/// @return the reply as it is, refusals included, or `refusal::kConnectFailed`
std::string GetServerVersion(Program& program, const std::string& type);
/// What kind of change a version is: the first of the last two digits of its middle number; "" without one.
std::string VersionClass(const std::string& version);
/// Compares versions as texts, asks the user, starts the updater and ends the program, or returns.
void CheckVersion(Program& program);

}  // namespace marovane
