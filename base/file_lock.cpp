#include "base/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

#include "base/posix_files.h"

namespace base {

FileLock::FileLock(const std::filesystem::path& file, std::chrono::milliseconds patience) {
  PosixFiles().CreateFolder(file.parent_path(), true);
  file_ = FileDescriptor(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!file_.IsOpen()) throw FileError("open", file, errno);
  constexpr std::chrono::milliseconds kLookEvery{20};
  const auto end = std::chrono::steady_clock::now() + patience;
  const auto take = [this] { return flock(file_.Get(), LOCK_EX | LOCK_NB) == 0; };
  while (!(isHeld_ = take()) && std::chrono::steady_clock::now() < end)
    std::this_thread::sleep_for(kLookEvery);
}

}  // namespace base
