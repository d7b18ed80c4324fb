#include "base/posix_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace base {
namespace {

using Path = Files::Path;

constexpr mode_t kPrivate = S_IRUSR | S_IWUSR;
constexpr mode_t kReadable = 0644;

template <class Call>
auto Retry(Call call) {
  while (true) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

FileDescriptor OpenFile(const char* doing, const Path& path, int flags, mode_t mode = 0) {
  FileDescriptor file(Retry([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); }));
  if (!file.IsOpen()) throw FileError(doing, path, errno);
  return file;
}

void SyncFolder(const Path& folder) {
  const FileDescriptor opened = OpenFile("open", folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
  // Some file systems cannot do this for folders, and then need not.
  if (Retry([&] { return fsync(opened.Get()); }) < 0 && errno != EINVAL)
    throw FileError("sync", folder, errno);
}

// Names of the entries of a folder for which this is true.
template <class Wanted>
std::vector<std::string> NamesIn(const Path& folder, Wanted isWanted) {
  std::vector<std::string> names;
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return names;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (isWanted(*entry)) names.push_back(entry->path().filename().string());
  }
  if (error) throw FileError("list", folder, error.value());
  std::ranges::sort(names);
  return names;
}

}  // namespace

FileWriter::FileWriter(Path path, int how, mode_t mode)
    : path_(std::move(path)), file_(OpenFile("write", path_, O_WRONLY | O_CREAT | how, mode)) {}

void FileWriter::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto written = Retry([&] { return write(file_.Get(), bytes.data(), bytes.size()); });
    if (written < 0) throw FileError("write", path_, errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void FileWriter::Sync() {
  if (Retry([&] { return fsync(file_.Get()); }) < 0) throw FileError("sync", path_, errno);
}

bool PosixFiles::FileExists(const Path& path) const {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

bool PosixFiles::FolderExists(const Path& path) const {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

std::string PosixFiles::Read(const Path& path) const {
  const FileDescriptor file = OpenFile("read", path, O_RDONLY);
  std::string bytes;
  std::array<char, 65536> buffer{};
  while (true) {
    const auto count = Retry([&] { return read(file.Get(), buffer.data(), buffer.size()); });
    if (count < 0) throw FileError("read", path, errno);
    if (count == 0) return bytes;
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

std::vector<std::string> PosixFiles::List(const Path& folder) const {
  return NamesIn(folder, [](const auto& entry) {
    std::error_code ignored;
    return entry.is_regular_file(ignored);
  });
}

std::vector<std::string> PosixFiles::ListFolders(const Path& folder) const {
  return NamesIn(folder, [](const auto& entry) {
    std::error_code ignored;
    return entry.symlink_status(ignored).type() == std::filesystem::file_type::directory;
  });
}

bool PosixFiles::IsOwn(const Path& path) const {
  struct stat found {};
  return lstat(path.c_str(), &found) == 0 && found.st_uid == geteuid() &&
         (S_ISREG(found.st_mode) || S_ISDIR(found.st_mode));
}

void PosixFiles::Write(const Path& path, std::string_view bytes, bool isPrivate) {
  FileWriter file(path, O_TRUNC, isPrivate ? kPrivate : kReadable);
  if (isPrivate && fchmod(file.Descriptor().Get(), kPrivate) < 0) {
    throw FileError("close to others", path, errno);
  }
  file.Write(bytes);
  file.Sync();
}

void PosixFiles::Append(const Path& path, std::string_view bytes) {
  FileWriter(path, O_APPEND, kReadable).Write(bytes);
}

void PosixFiles::MakeExecutable(const Path& path) {
  std::error_code error;
  std::filesystem::permissions(path, std::filesystem::perms{0755}, error);
  if (error) throw FileError("make executable", path, error.value());
}

void PosixFiles::Rename(const Path& from, const Path& to) {
  if (std::rename(from.c_str(), to.c_str()) < 0) throw FileError("rename", from, errno);
  SyncFolder(to.parent_path());
}

void PosixFiles::Delete(const Path& path) {
  if (unlink(path.c_str()) < 0) throw FileError("delete", path, errno);
}

void PosixFiles::CreateFolder(const Path& path, bool isPrivate) {
  if (path.empty() || FolderExists(path)) return;
  CreateFolder(path.parent_path(), isPrivate);
  // Another process may have been faster.
  if (mkdir(path.c_str(), isPrivate ? S_IRWXU : 0755) < 0 && !FolderExists(path)) {
    throw FileError("create folder", path, errno);
  }
}

void PosixFiles::DeleteEmptyFolder(const Path& path) {
  if (rmdir(path.c_str()) < 0 && errno != ENOTEMPTY && errno != EEXIST) {
    throw FileError("delete folder", path, errno);
  }
}

void PosixFiles::MakePrivate(const Path& path) {
  struct stat found {};
  if (stat(path.c_str(), &found) < 0 || chmod(path.c_str(), found.st_mode & S_IRWXU) < 0) {
    throw FileError("close to others", path, errno);
  }
}

}  // namespace base
