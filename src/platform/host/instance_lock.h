// One instance of the program for one set of working data.
#pragma once

#include <filesystem>

#include "base/file_descriptor.h"

/// Holds a lock file until this object goes, or its process does.
class InstanceLock {
 public:
  /// The file's folder is made when it is missing. Throws RunTimeError when the file cannot be opened.
  explicit InstanceLock(const std::filesystem::path& file);
  /// False when another process holds the lock.
  bool IsHeld() const { return isHeld_; }

 private:
  base::FileDescriptor file_;
  bool isHeld_;
};
