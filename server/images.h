// The pictures of generated pages, which are part of the program.
#pragma once

#include <string_view>

namespace marovane {

struct Image {
  std::string_view path;  ///< below the server's root
  const char* contentType;
  std::string_view bytes;
};

/// Null for an unknown path.
const Image* FindImage(std::string_view path);

}  // namespace marovane
