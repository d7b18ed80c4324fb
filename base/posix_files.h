// Files of this machine.
#pragma once

#include <sys/types.h>

#include "base/file_descriptor.h"
#include "base/files.h"

namespace base {

/// A file that is written piece by piece.
class FileWriter {
 public:
  /// Creates the file when it is missing.
  /// @param how O_TRUNC, O_APPEND or O_EXCL (open(2))
  /// @param mode of a file that was not there
  FileWriter(std::filesystem::path path, int how, mode_t mode);
  const FileDescriptor& Descriptor() const { return file_; }
  void Write(std::string_view bytes);
  /// Returns when all has reached the disk.
  void Sync();

 private:
  std::filesystem::path path_;
  FileDescriptor file_;
};

/// Files through the system's own calls. Private files are made 0600, others 0644; private folders 0700,
/// others 0755; less where the user's mask says so. Errors are a FileError.
class PosixFiles : public Files {
 public:
  bool FileExists(const Path& path) const override;
  bool FolderExists(const Path& path) const override;
  std::string Read(const Path& path) const override;
  std::vector<std::string> List(const Path& folder) const override;
  std::vector<std::string> ListFolders(const Path& folder) const override;
  bool IsOwn(const Path& path) const override;
  /// A file that was open to others and is written as a private one is closed to them.
  void Write(const Path& path, std::string_view bytes, bool isPrivate) override;
  void Append(const Path& path, std::string_view bytes) override;
  void MakeExecutable(const Path& path) override;
  /// Replaces a file of the target's name in one step, which has reached the disk on return.
  void Rename(const Path& from, const Path& to) override;
  void Delete(const Path& path) override;
  /// Folders that exist keep their mode, so that a shared one is never closed to others.
  void CreateFolder(const Path& path, bool isPrivate) override;
  void DeleteEmptyFolder(const Path& path) override;
  void MakePrivate(const Path& path) override;
};

}  // namespace base
