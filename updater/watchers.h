// Who watches an update: a small window, or a line of the terminal.
#pragma once

#include <filesystem>

#include "updater/progress.h"

namespace updater {

/// Starts the window where there is a screen and such a program; elsewhere a terminal, if there is one, gets
/// a line. Without either the watcher is empty. The window closes with the watcher. SIGPIPE has to be
/// ignored: a window that goes away is written to no more.
/// @param windowProgram of the version that runs
Progress::Watcher OpenWatcher(const std::filesystem::path& windowProgram);

/// True where windows can be shown.
bool HasDisplay();

}  // namespace updater
