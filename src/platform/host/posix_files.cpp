#include "platform/host/posix_files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include "platform/host/file_descriptor.h"
#include "platform/run_time_error.h"

namespace {

using Path = Files::Path;

[[noreturn]] void Fail(const char* doing, const Path& path, int error) {
  throw RunTimeError(
      fmt::format("cannot {} {}: {}", doing, path.string(), std::generic_category().message(error)));
}

template <class Call>
auto Retry(Call call) {
  while (true) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

FileDescriptor OpenFile(const char* doing, const Path& path, int flags, mode_t mode = 0) {
  FileDescriptor file(Retry([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); }));
  if (!file.IsOpen()) Fail(doing, path, errno);
  return file;
}

void WriteAll(const FileDescriptor& file, std::string_view bytes, const Path& path) {
  while (!bytes.empty()) {
    const auto written = Retry([&] { return write(file.Get(), bytes.data(), bytes.size()); });
    if (written < 0) Fail("write", path, errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void SyncFolder(const Path& folder) {
  const FileDescriptor opened = OpenFile("open", folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
  // Some file systems cannot do this for folders, and then need not.
  if (Retry([&] { return fsync(opened.Get()); }) < 0 && errno != EINVAL) Fail("sync", folder, errno);
}

}  // namespace

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
    if (count < 0) Fail("read", path, errno);
    if (count == 0) return bytes;
    bytes.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

std::vector<std::string> PosixFiles::List(const Path& folder) const {
  std::vector<std::string> names;
  if (!FolderExists(folder)) return names;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (FileExists(entry->path())) names.push_back(entry->path().filename().string());
  }
  if (error) Fail("list", folder, error.value());
  std::ranges::sort(names);
  return names;
}

void PosixFiles::Write(const Path& path, std::string_view bytes, bool isPrivate) {
  const FileDescriptor file =
      OpenFile("write", path, O_WRONLY | O_CREAT | O_TRUNC, isPrivate ? S_IRUSR | S_IWUSR : 0644);
  // The mode given above counts only for a file that was not there.
  if (isPrivate && fchmod(file.Get(), S_IRUSR | S_IWUSR) < 0) Fail("close to others", path, errno);
  WriteAll(file, bytes, path);
  if (Retry([&] { return fsync(file.Get()); }) < 0) Fail("sync", path, errno);
}

void PosixFiles::Append(const Path& path, std::string_view bytes) {
  WriteAll(OpenFile("write", path, O_WRONLY | O_CREAT | O_APPEND, 0644), bytes, path);
}

void PosixFiles::MakeExecutable(const Path& path) {
  using std::filesystem::perms;
  std::error_code error;
  std::filesystem::permissions(
      path,
      perms::owner_all | perms::group_read | perms::group_exec | perms::others_read | perms::others_exec,
      error);
  if (error) Fail("make executable", path, error.value());
}

void PosixFiles::Rename(const Path& from, const Path& to) {
  if (std::rename(from.c_str(), to.c_str()) < 0) Fail("rename", from, errno);
  SyncFolder(to.parent_path());
}

void PosixFiles::Delete(const Path& path) {
  if (unlink(path.c_str()) < 0) Fail("delete", path, errno);
}

void PosixFiles::CreateFolder(const Path& path, bool isPrivate) {
  if (path.empty() || FolderExists(path)) return;
  CreateFolder(path.parent_path(), isPrivate);
  // Another process may have been faster.
  if (mkdir(path.c_str(), isPrivate ? S_IRWXU : 0755) < 0 && !FolderExists(path)) {
    Fail("create folder", path, errno);
  }
}
