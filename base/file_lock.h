// A file that one process at a time can hold.
#pragma once

#include <chrono>
#include <filesystem>

#include "base/file_descriptor.h"

namespace base {

/// Holds a lock file until this object goes, or its process does.
class FileLock {
 public:
  /// The file is made when it is missing, with its folder, for its owner alone. Throws FileError when it
  /// cannot be opened.
  /// @param patience how long another process may keep it
  explicit FileLock(const std::filesystem::path& file,
                    std::chrono::milliseconds patience = std::chrono::milliseconds{0});
  /// False when another process holds the lock.
  bool IsHeld() const { return isHeld_; }

 private:
  FileDescriptor file_;
  bool isHeld_;
};

}  // namespace base
