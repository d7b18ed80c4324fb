// Where the engine's language data stands.
#pragma once

#include <filesystem>

namespace tolvex {

/// The first folder that exists of: the one that the variable MAROVANE_DATA names, ../share/tolvex and
/// ../share/marovane/tolvex beside the running program. Throws std::runtime_error when there is none.
std::filesystem::path FindDataDir();

}  // namespace tolvex
