// A new version has to prove that it works before it gets the old one's place.
#pragma once

#include <filesystem>
#include <string>

namespace updater {

/// Starts the programs of a version on this computer, in a home of its own: each must say its version, and
/// the terminal edition must judge a right and a wrong sentence with its own server and engine. Throws
/// Refusal.
void TryOut(const std::filesystem::path& tree, const std::string& version);

}  // namespace updater
