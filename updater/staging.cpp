#include "updater/staging.h"

#include <fcntl.h>
#include <fmt/format.h>

#include <cerrno>
#include <system_error>

#include "base/posix_files.h"
#include "base/sha256.h"
#include "updater/refusal.h"

namespace updater {

namespace {

namespace fs = std::filesystem;

bool IsSameLength(const fs::path& path, std::uint64_t length) {
  std::error_code error;
  return fs::is_regular_file(path, error) && fs::file_size(path, error) == length;
}

}  // namespace

Staging::Staging(const fs::path& versions) : folder_(versions / ".new") {
  std::error_code error;
  fs::remove_all(folder_, error);
  base::PosixFiles().CreateFolder(folder_, false);
}

Staging::~Staging() {
  std::error_code ignored;
  if (!folder_.empty()) fs::remove_all(folder_, ignored);
}

// False when the bytes are not those of the list; the file is then gone again.
bool Staging::WriteFrom(Source& source, const std::string& name, const ListedFile& file,
                        const fs::path& target, const Written& written) {
  constexpr mode_t kReadable = 0644;
  constexpr mode_t kRunnable = 0755;
  base::FileWriter writer(target, O_EXCL, file.isProgram ? kRunnable : kReadable);
  base::Sha256 digest;
  std::uint64_t count = 0;
  source.Fetch(name, file.length, [&](std::string_view bytes) {
    digest.Add(bytes);
    writer.Write(bytes);
    written(count += bytes.size());
  });
  if (digest.Digits() == file.sha256) {
    writer.Sync();
    return true;
  }
  fs::remove(target);
  return false;
}

void Staging::Bring(const PackageList& list, Source& source, const fs::path& installed, Progress& progress) {
  if (fs::space(folder_).available < list.Length()) throw base::FileError("write", folder_, ENOSPC);
  const auto old = installed.empty() ? nullptr : OpenSource(installed.string());
  const std::uint64_t all = list.Length();
  std::uint64_t before = 0;  // bytes of the files that are there
  for (const auto& file : list.files) {
    base::PosixFiles().CreateFolder((folder_ / file.path).parent_path(), false);
    BringFile(file, source, old && IsSameLength(installed / file.path, file.length) ? old.get() : nullptr,
              [&](std::uint64_t bytes) { progress.Advance(before + bytes, all); });
    progress.Advance(before += file.length, all);
  }
}

void Staging::BringFile(const ListedFile& file, Source& source, Source* installed,
                        const Written& written) const {
  const fs::path target = folder_ / file.path;
  // A file of the same length may be another one: its bytes count when they have been compared.
  if (installed != nullptr && WriteFrom(*installed, file.path, file, target, [](std::uint64_t) {})) return;
  if (WriteFrom(source, "files/" + file.sha256, file, target, written)) return;
  throw Refusal(
      fmt::format("更新檔 {} 的內容和清單不符，可能已經損毀或遭人竄改，沒有更新任何檔案。", file.path));
}

void Staging::CarryOver(const fs::path& installed) const {
  for (const char* const name : {"installation.set", "debug.ini", "update.key"}) {
    const fs::path from = installed / "share" / "marovane" / name;
    const fs::path to = folder_ / "share" / "marovane" / name;
    std::error_code error;
    if (!fs::exists(from) || fs::exists(to)) continue;
    fs::copy_file(from, to, error);
    if (error) throw base::FileError("write", to, error.value());
  }
}

void Staging::Keep(const fs::path& place) {
  base::PosixFiles().Rename(folder_, place);
  folder_.clear();
}

}  // namespace updater
