// The environment of this process.
#pragma once

#include "platform/environment.h"

namespace marovane {

/// Reads the variables and finds the folders by the place of the running program: the files that came with it
/// in ../share/marovane, the other programs beside it.
/// @param commandLine the edition word, or nothing
/// Throws RunTimeError when the system does not say where the program is.
Environment ReadHostEnvironment(const std::string& commandLine);

}  // namespace marovane
