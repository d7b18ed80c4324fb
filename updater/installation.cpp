#include "updater/installation.h"

#include <fmt/format.h>
#include <unistd.h>

#include "base/posix_files.h"
#include "updater/package_list.h"
#include "updater/refusal.h"

namespace updater {

namespace {

namespace fs = std::filesystem;

constexpr const char* kCurrent = "current";
constexpr const char* kPrevious = "previous";

// The name below versions/ that a link leads to, "" for none.
std::string NameBehind(const fs::path& link) {
  std::error_code error;
  const fs::path target = fs::read_symlink(link, error);
  return error ? "" : target.filename().string();
}

// The temporary link is beside the link, so that a kill leaves the old one or the new one.
void Point(const fs::path& link, const std::string& name) {
  const fs::path fresh = link.string() + ".new";
  std::error_code ignored;
  fs::remove(fresh, ignored);
  fs::create_directory_symlink(fs::path("versions") / name, fresh);
  base::PosixFiles().Rename(fresh, link);
}

}  // namespace

Installation FindInstallation(const fs::path& programFolder) {
  std::error_code error;
  const fs::path tree = fs::canonical(programFolder / ".." / "..", error);
  const fs::path home = tree.parent_path().parent_path();
  Installation found{home, NameBehind(home / kCurrent)};
  if (error || tree.parent_path().filename() != "versions" || !IsVersion(found.Version())) {
    throw Refusal("這份 Marovane 不是可以自動更新的安裝，請用當初安裝它的方式更新，例如系統的套件管理程式。");
  }
  if (access(home.c_str(), W_OK) != 0 || access(found.Versions().c_str(), W_OK) != 0) {
    throw Refusal(fmt::format("您沒有寫入 {} 的權限，請安裝程式的人來更新。", home.string()));
  }
  return found;
}

std::string FreeName(const Installation& installation, const std::string& version) {
  std::string name = version;
  for (int i = 2; fs::exists(installation.Versions() / name); ++i) name = fmt::format("{}-{}", version, i);
  return name;
}

void SwitchTo(Installation& installation, const std::string& name) {
  if (!installation.current.empty()) Point(installation.home / kPrevious, installation.current);
  Point(installation.home / kCurrent, name);
  installation.current = name;
}

void SwitchBack(Installation& installation, bool discards) {
  const std::string previous = NameBehind(installation.home / kPrevious);
  if (previous.empty() || previous == installation.current ||
      !fs::exists(installation.Versions() / previous)) {
    throw Refusal("沒有可以回復的舊版本。");
  }
  const std::string left = installation.current;
  Point(installation.home / kCurrent, previous);
  installation.current = previous;
  if (!discards) return Point(installation.home / kPrevious, left);
  std::error_code ignored;
  fs::remove(installation.home / kPrevious, ignored);
  fs::remove_all(installation.Versions() / left, ignored);
}

void RemoveOldVersions(const Installation& installation) {
  std::error_code ignored;
  const std::string previous = NameBehind(installation.home / kPrevious);
  for (const auto& entry : fs::directory_iterator(installation.Versions(), ignored)) {
    const std::string name = entry.path().filename();
    if (name != installation.current && name != previous) fs::remove_all(entry.path(), ignored);
  }
}

}  // namespace updater
