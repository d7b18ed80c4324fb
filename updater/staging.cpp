#include "updater/staging.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "updater/refusal.h"
#include "updater/signature.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void FailWriting(const fs::path& path, int error) {
  if (error == ENOSPC || error == EDQUOT || error == EFBIG) {
    throw Refusal("磁碟空間不足，沒有更新任何檔案。請清出一些空間再試。");
  }
  throw Refusal(fmt::format("無法寫入 {}（{}），沒有更新任何檔案。", path.string(),
                            std::generic_category().message(error)));
}

class FileWriter {
 public:
  FileWriter(fs::path path, mode_t mode)
      : path_(std::move(path)), file_(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode)) {
    if (file_ < 0) FailWriting(path_, errno);
  }
  ~FileWriter() {
    if (file_ >= 0) close(file_);
  }
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;

  void Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(file_, bytes.data(), bytes.size());
      if (written < 0 && errno != EINTR) FailWriting(path_, errno);
      if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void Finish() {
    if (fsync(file_) < 0) FailWriting(path_, errno);
    const int file = std::exchange(file_, -1);
    if (close(file) < 0) FailWriting(path_, errno);
  }

 private:
  fs::path path_;
  int file_;
};

void MakeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) FailWriting(folder, error.value());
}

// False when the bytes are not those of the list; the file is then gone again.
bool WriteFrom(Source& source, const std::string& name, const ListedFile& file, const fs::path& target) {
  constexpr mode_t kReadable = 0644;
  constexpr mode_t kRunnable = 0755;
  FileWriter writer(target, file.isProgram ? kRunnable : kReadable);
  Sha256 digest;
  source.Fetch(name, file.length, [&](std::string_view bytes) {
    digest.Take(bytes);
    writer.Write(bytes);
  });
  if (digest.Digits() == file.sha256) {
    writer.Finish();
    return true;
  }
  fs::remove(target);
  return false;
}

bool IsSameLength(const fs::path& path, std::uint64_t length) {
  std::error_code error;
  return fs::is_regular_file(path, error) && fs::file_size(path, error) == length;
}

}  // namespace

Staging::Staging(const fs::path& versions) : folder_(versions / ".new") {
  std::error_code error;
  fs::remove_all(folder_, error);
  MakeFolder(folder_);
}

Staging::~Staging() {
  std::error_code ignored;
  if (!folder_.empty()) fs::remove_all(folder_, ignored);
}

void Staging::Bring(const PackageList& list, Source& source, const fs::path& installed) {
  if (fs::space(folder_).available < list.Length()) {
    FailWriting(folder_, ENOSPC);
  }
  const auto old = installed.empty() ? nullptr : OpenSource(installed.string());
  for (const auto& file : list.files) {
    MakeFolder((folder_ / file.path).parent_path());
    BringFile(file, source, old && IsSameLength(installed / file.path, file.length) ? old.get() : nullptr);
  }
}

void Staging::BringFile(const ListedFile& file, Source& source, Source* installed) const {
  const fs::path target = folder_ / file.path;
  if (installed != nullptr && WriteFrom(*installed, file.path, file, target)) return;
  if (WriteFrom(source, "files/" + file.sha256, file, target)) return;
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
    if (error) FailWriting(to, error.value());
  }
}

void Staging::Keep(const fs::path& place) {
  fs::rename(folder_, place);
  folder_.clear();
}
