#include "updater/update.h"

#include <fmt/format.h>

#include <fstream>
#include <iterator>

#include "base/file_lock.h"
#include "updater/installation.h"
#include "updater/refusal.h"
#include "updater/signature.h"
#include "updater/staging.h"
#include "updater/trial.h"

namespace updater {

namespace {

namespace fs = std::filesystem;

// One update at a time.
base::FileLock Lock(const fs::path& home) {
  base::FileLock lock(home / "update.lock");
  if (!lock.IsHeld()) throw Refusal("另一個更新正在進行，請稍候再試。");
  return lock;
}

std::string ReadText(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

PackageList FetchList(Source& source, const std::string& word, const fs::path& keyFile) {
  constexpr std::uint64_t kLongestList = std::uint64_t{4} << 20;
  std::string published;
  source.Fetch(word + ".list", kLongestList, [&](std::string_view bytes) { published += bytes; });
  return ReadList(Verified(published, ReadText(keyFile)));
}

// Versions compare as texts, as the program compares them.
void RefuseOlder(const PackageList& list, const std::string& running, bool maySame) {
  if (list.version > running || (maySame && list.version == running)) return;
  if (list.version == running) throw Refusal("更新主機上沒有比現在更新的版本，沒有更新任何檔案。");
  throw Refusal(
      fmt::format("更新主機提供的版本 {} 比現在的版本 {} 還舊，沒有更新任何檔案。", list.version, running));
}

void BringTrySwitch(Installation& installation, const PackageList& list, Source& source, bool takesInstalled,
                    Progress& progress) {
  const fs::path installed = installation.current.empty() ? fs::path() : installation.Current();
  Staging staging(installation.Versions());
  progress.Begin(Step::kBringing);
  staging.Bring(list, source, takesInstalled ? installed : fs::path(), progress);
  progress.Begin(Step::kTrying);
  TryOut(staging.Folder(), list.version);
  progress.Begin(Step::kSwitching);
  if (!installed.empty()) staging.CarryOver(installed);
  const std::string name = FreeName(installation, list.version);
  staging.Keep(installation.Versions() / name);
  SwitchTo(installation, name);
  progress.Begin(Step::kDone);
}

}  // namespace

void Update(const fs::path& programFolder, const std::string& host, const std::string& word,
            Progress& progress) {
  progress.Begin(Step::kFinding);
  Installation installation = FindInstallation(programFolder);
  const auto lock = Lock(installation.home);
  const std::string started = fs::canonical(programFolder / ".." / "..").filename();
  if (started < installation.current) return;  // somebody has updated it since this program was started
  const bool reinstalls = word == "mrv_reinstaller";
  const auto source = OpenSource(host);
  const PackageList list = FetchList(*source, word, programFolder / "update.key");
  RefuseOlder(list, installation.Version(), reinstalls);
  BringTrySwitch(installation, list, *source, !reinstalls, progress);
  RemoveOldVersions(installation);
}

void Install(const fs::path& home, const std::string& host, const fs::path& keyFile, Progress& progress) {
  progress.Begin(Step::kFinding);
  if (fs::exists(home / "current")) {
    throw Refusal(fmt::format("{} 裡已經有一份 Marovane。", home.string()));
  }
  fs::create_directories(home / "versions");
  const auto lock = Lock(home);
  Installation installation{fs::canonical(home), ""};
  const auto source = OpenSource(host);
  BringTrySwitch(installation, FetchList(*source, "mrv_reinstaller", keyFile), *source, false, progress);
  const fs::path ownKey = installation.Current() / "share" / "marovane" / "update.key";
  if (!fs::exists(ownKey)) fs::copy_file(keyFile, ownKey);
}

}  // namespace updater
