#include "engine/program/registry_file.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdlib>

#include "base/posix_files.h"

namespace tolvex {

base::KeyValues ReadRegistry(const std::filesystem::path& path) {
  constexpr base::KeyValueFormat kFormat{.charset = base::KeyValueFormat::Charset::kCp950WithReferences,
                                         .blanks = " "};
  return base::KeyValues(base::PosixFiles().Read(path), kFormat);
}

void WriteRegistry(const std::filesystem::path& path, const base::KeyValues& values) {
  base::PosixFiles files;
  base::RewriteFile(files, path, values.Bytes(), true);
}

std::filesystem::path WriteFresh(std::string_view ending, std::string_view bytes) {
  const std::filesystem::path path = std::filesystem::current_path() / fmt::format("tmpXXXXXX{}", ending);
  std::string name = path.string();
  const base::FileDescriptor file(mkstemps(name.data(), static_cast<int>(ending.size())));
  if (!file.IsOpen()) throw base::FileError("create", path, errno);
  base::PosixFiles().Write(name, bytes, true);
  return name;
}

}  // namespace tolvex
