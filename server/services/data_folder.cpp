#include "server/services/data_folder.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "base/key_values.h"
#include "base/posix_files.h"

namespace server {

std::filesystem::path MadeDataFolder(const std::filesystem::path& folder) {
  std::error_code failure;
  if (!std::filesystem::is_directory(folder, failure)) {
    std::filesystem::create_directories(folder.parent_path(), failure);
    if (mkdir(folder.c_str(), 0700) != 0) {
      throw std::runtime_error(fmt::format("cannot make the folder {}: {}", folder.string(),
                                           std::generic_category().message(errno)));
    }
  }
  return folder;
}

void ProtectNewSchool(const std::filesystem::path& folder) {
  base::PosixFiles files;
  if (files.FileExists(folder / "server.db")) return;
  const auto file = folder / "server.set";
  base::KeyValues values = base::KeyValues::Read(files, file);
  if (values.Find("requireToken")) return;
  values.Set("requireToken", "1");
  base::RewriteFile(files, file, values.Bytes(), true);
}

}  // namespace server
