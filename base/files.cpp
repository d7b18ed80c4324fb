#include "base/files.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>

namespace base {
namespace {

void DropUnfinished(Files& files, const Files::Path& path) {
  try {
    if (files.FileExists(path)) files.Delete(path);
  } catch (const Error&) {
    return;  // the error before this one says more
  }
}

}  // namespace

FileError::FileError(const char* doing, const std::filesystem::path& where, int error)
    : Error(fmt::format("cannot {} {}: {}", doing, where.string(), std::generic_category().message(error))),
      path(where),
      code(error, std::generic_category()) {}

bool FileError::IsDiskFull() const {
  return code.value() == ENOSPC || code.value() == EDQUOT || code.value() == EFBIG;
}

void RewriteFile(Files& files, const Files::Path& path, std::string_view bytes, bool isPrivate) {
  const Files::Path fresh = fmt::format("{}.{}.new", path.string(), getpid());
  try {
    files.Write(fresh, bytes, isPrivate);
    files.Rename(fresh, path);
  } catch (const Error&) {
    DropUnfinished(files, fresh);
    throw;
  }
}

std::string ReadIfThere(const Files& files, const Files::Path& path) {
  try {
    return files.Read(path);
  } catch (const FileError& error) {
    if (error.code == std::errc::no_such_file_or_directory || error.code == std::errc::not_a_directory)
      return "";
    throw;
  }
}

void CopyFile(Files& files, const Files::Path& from, const Files::Path& to) {
  RewriteFile(files, to, files.Read(from), false);
}

}  // namespace base
