#include "base/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

#include "base/files.h"

namespace base {

FileLock::FileLock(const std::filesystem::path& file) {
  std::error_code ignored;
  std::filesystem::create_directories(file.parent_path(), ignored);
  file_ = FileDescriptor(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!file_.IsOpen()) throw FileError("open", file, errno);
  isHeld_ = flock(file_.Get(), LOCK_EX | LOCK_NB) == 0;
}

}  // namespace base
