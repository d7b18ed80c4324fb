#include "platform/host/instance_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include "platform/run_time_error.h"

InstanceLock::InstanceLock(const std::filesystem::path& file) {
  std::error_code ignored;
  std::filesystem::create_directories(file.parent_path(), ignored);
  file_ = base::FileDescriptor(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!file_.IsOpen()) throw RunTimeError("cannot open " + file.string());
  isHeld_ = flock(file_.Get(), LOCK_EX | LOCK_NB) == 0;
}
