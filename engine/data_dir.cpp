#include <array>
#include <cstdlib>
#include <stdexcept>

#include "engine/tolvex.h"

namespace tolvex {

namespace fs = std::filesystem;

fs::path FindDataDir() {
  std::error_code ignored;
  const fs::path beside = fs::read_symlink("/proc/self/exe", ignored).parent_path();
  const char* named = std::getenv("MAROVANE_DATA");  // NOLINT(concurrency-mt-unsafe): nobody sets it
  const std::array<fs::path, 3> places = {fs::path(named == nullptr ? "" : named), beside / "../share/tolvex",
                                          beside / "../share/marovane/tolvex"};
  for (const fs::path& place : places) {
    if (!place.empty() && fs::exists(place, ignored)) return place;
  }
  throw std::runtime_error("the language data was not found; set MAROVANE_DATA to its folder");
}

}  // namespace tolvex
