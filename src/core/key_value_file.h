// Key-value files: lines of `key=value` in CP950, ended by CR LF.
#pragma once

#include <string>
#include <string_view>

namespace base {
class Files;
}

namespace marovane {

/// First line of `registry.set`.
inline constexpr std::string_view kRegistryMarker = "**settings for tolvex=";

/// Reads or rewrites one key. Texts are UTF-8 here and CP950 in the file; lines that are not touched keep
/// their bytes.
/// @param mode "R" returns the trimmed value, or "" when key or file is absent; "W" sets the key, creating
///        the file if need be, and returns ""; any other word reads the file and returns "".
/// Throws RunTimeError for a file that cannot be opened, and when the bound of 100 entries is passed.
std::string ReadWriteSetFile(base::Files& files, const std::string& filePath, std::string_view mode,
                             std::string_view key, std::string_view value);

/// Acts on the exchange file of the engine. "RESET" writes it anew with its ten lines; "REWRITE_LINE1"
/// repairs its first line by way of `registry_w.set` beside it; another word does nothing. Throws
/// RunTimeError.
void ResetRegistrySet(base::Files& files, const std::string& registryFile, std::string_view action);

}  // namespace marovane
