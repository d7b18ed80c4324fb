// The exchange file of the check program: key=value lines in CP950, ended by CR LF.
#pragma once

#include <filesystem>
#include <string_view>

#include "base/key_values.h"

namespace tolvex {

/// Reads an exchange file. Throws base::Error when it cannot be read.
base::KeyValues ReadRegistry(const std::filesystem::path& path);

/// Puts the new file in place of the old one in one step. Throws base::Error.
void WriteRegistry(const std::filesystem::path& path, const base::KeyValues& values);

/// Writes a file under a fresh name in the working directory. Throws base::Error.
std::filesystem::path WriteFresh(std::string_view ending, std::string_view bytes);

}  // namespace tolvex
