// Result pages that the local engine leaves behind.
#pragma once

#include <string>

namespace base {
class Files;
}

namespace marovane {

/// Text of a file in CP950 without its first two bytes, which are not part of the text. Throws RunTimeError
/// when it cannot be read.
std::string ReadBig5File(const base::Files& files, const std::string& path);

}  // namespace marovane
