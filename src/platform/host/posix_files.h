// Files of this machine.
#pragma once

#include "platform/files.h"

/// Files through the system's own calls. Private files are made 0600, others 0644; private folders 0700,
/// others 0755; less where the user's mask says so. Errors name the path and the system's reason.
class PosixFiles : public Files {
 public:
  bool FileExists(const Path& path) const override;
  bool FolderExists(const Path& path) const override;
  std::string Read(const Path& path) const override;
  std::vector<std::string> List(const Path& folder) const override;
  /// A file that was open to others and is written as a private one is closed to them.
  void Write(const Path& path, std::string_view bytes, bool isPrivate) override;
  void Append(const Path& path, std::string_view bytes) override;
  /// Replaces a file of the target's name in one step, which has reached the disk on return.
  void MakeExecutable(const Path& path) override;
  void Rename(const Path& from, const Path& to) override;
  void Delete(const Path& path) override;
  /// Folders that exist keep their mode, so that a shared one is never closed to others.
  void CreateFolder(const Path& path, bool isPrivate) override;
};
