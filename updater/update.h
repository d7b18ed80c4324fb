// The way of an update, from the list to the running program.
#pragma once

#include <filesystem>
#include <string>

#include "updater/progress.h"

namespace updater {

/// Brings the newest version beside the one that runs, has it prove that it works, and switches over. A
/// reinstallation takes no file from the version that runs, and may bring the same version. Throws Refusal,
/// or another std::exception, with everything as it was.
/// @param programFolder share/marovane of the version that runs
/// @param host see OpenSource
/// @param word "mrv_updater" or "mrv_reinstaller": names the list
void Update(const std::filesystem::path& programFolder, const std::string& host, const std::string& word,
            Progress& progress);

/// The first installation, into a folder that has none.
/// @param keyFile holds the open key of the server's owner
void Install(const std::filesystem::path& home, const std::string& host, const std::filesystem::path& keyFile,
             Progress& progress);

}  // namespace updater
