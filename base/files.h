// Files and folders.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/error.h"

namespace base {

/// A file or folder that could not be used; the text names it with the system's reason.
class FileError : public Error {
 public:
  /// @param doing a verb, such as "write"
  FileError(const char* doing, const std::filesystem::path& path, int error);

  std::filesystem::path path;
  std::error_code code;
  bool IsDiskFull() const;
};

/// The file system in small steps, each of which a test can make fail. Paths use "/". All calls but the
/// questions throw Error when they fail.
class Files {
 public:
  using Path = std::filesystem::path;

  virtual ~Files() = default;
  virtual bool FileExists(const Path& path) const = 0;
  virtual bool FolderExists(const Path& path) const = 0;
  virtual std::string Read(const Path& path) const = 0;
  /// Names of the files of a folder, sorted; empty when the folder is missing.
  virtual std::vector<std::string> List(const Path& folder) const = 0;
  /// Names of the folders in a folder, sorted, without links; empty when the folder is missing.
  virtual std::vector<std::string> ListFolders(const Path& folder) const = 0;
  /// True for a file or folder, not a link to one, that belongs to the user of this process.
  virtual bool IsOwn(const Path& path) const = 0;

  /// Creates or empties a file, writes the bytes and has them reach the disk.
  virtual void Write(const Path& path, std::string_view bytes, bool isPrivate) = 0;
  virtual void Append(const Path& path, std::string_view bytes) = 0;
  /// Lets a file be run as a program, by whoever may read it.
  virtual void MakeExecutable(const Path& path) = 0;
  virtual void Rename(const Path& from, const Path& to) = 0;
  virtual void Delete(const Path& path) = 0;
  /// Creates a folder with those above it. A private one is for its owner alone (0700).
  virtual void CreateFolder(const Path& path, bool isPrivate) = 0;
  /// Deletes a folder that is empty. One that is not stays.
  virtual void DeleteEmptyFolder(const Path& path) = 0;
  /// Takes all rights from everybody but the owner.
  virtual void MakePrivate(const Path& path) = 0;
};

/// Replaces a file's content through a temporary file beside it, so that a kill at any point leaves the old
/// content or the new one whole, also when another process writes the same file. After an error the temporary
/// file is gone again. A private file is for its owner alone (0600).
void RewriteFile(Files& files, const Files::Path& path, std::string_view bytes, bool isPrivate);

/// The bytes of a file; "" when there is none.
std::string ReadIfThere(const Files& files, const Files::Path& path);

/// Copies a file through a temporary file beside the target.
void CopyFile(Files& files, const Files::Path& from, const Files::Path& to);

}  // namespace base
