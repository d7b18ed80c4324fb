// Pages and pictures that never change; they are part of the program.
#pragma once

#include <string_view>

namespace server {

struct StaticFile {
  std::string_view path;  ///< below the server's root
  const char* contentType;
  std::string_view bytes;
};

/// Null for an unknown path.
const StaticFile* FindStaticFile(std::string_view path);

}  // namespace server
