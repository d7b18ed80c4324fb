#include "core/records_move.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "base/database.h"
#include "base/file_lock.h"
#include "base/files.h"
#include "core/data_paths.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

using Path = base::Files::Path;

// What moves, the records last: where they are, nothing is missing.
constexpr const char* kMovedFolders[] = {"marovane-server", "marovane"};

bool HasRecords(const base::Files& files, const Path& root) {
  const auto isFile = [&](const char* name) { return files.FileExists(root / name); };
  const auto isFolder = [&](const char* name) { return files.FolderExists(root / name); };
  return isFile("marovane/Marovane.mdb") || isFile("marovane/archive.mdb") || isFolder("marovane/learners") ||
         isFolder("marovane/outbox") || isFolder("marovane/drafts") || isFile("marovane-server/server.db");
}

bool HasOwnFiles(const base::Files& files, const Path& folder) {
  if (!files.IsOwn(folder)) return false;
  const auto isOwn = [&](const std::string& name) { return files.IsOwn(folder / name); };
  const auto hasOwn = [&](const std::string& name) { return HasOwnFiles(files, folder / name); };
  return std::ranges::any_of(files.List(folder), isOwn) ||
         std::ranges::any_of(files.ListFolders(folder), hasOwn);
}

// The name comes last, so that whatever has it is whole, and on the disk.
void CopyFolder(base::Files& files, const Path& from, const Path& to) {
  const Path unfinished = to.string() + ".part";
  files.CreateFolder(unfinished, true);
  for (const auto& name : files.ListFolders(from)) {
    if (files.IsOwn(from / name)) CopyFolder(files, from / name, unfinished / name);
  }
  for (const auto& name : files.List(from)) {
    if (files.IsOwn(from / name)) {
      base::RewriteFile(files, unfinished / name, files.Read(from / name), true);
    }
  }
  files.Rename(unfinished, to);
}

// Only what has an equal in the copy is deleted.
void DeleteCopied(base::Files& files, const Path& folder, const Path& copy) {
  if (!files.IsOwn(folder)) return;
  for (const auto& name : files.ListFolders(folder)) DeleteCopied(files, folder / name, copy / name);
  for (const auto& name : files.List(folder)) {
    const bool isCopied = files.IsOwn(folder / name) && files.FileExists(copy / name) &&
                          files.Read(folder / name) == files.Read(copy / name);
    if (isCopied) files.Delete(folder / name);
  }
  files.DeleteEmptyFolder(folder);
}

void DeleteFolder(base::Files& files, const Path& folder) {
  for (const auto& name : files.ListFolders(folder)) DeleteFolder(files, folder / name);
  for (const auto& name : files.List(folder)) files.Delete(folder / name);
  files.DeleteEmptyFolder(folder);
}

// Keeps other programs away from the records as long as it lives.
class Guard {
 public:
  Guard(const base::Files& files, base::Databases& databases) : files_(files), databases_(databases) {}

  // Throws RunTimeError when a program has something of this folder open.
  void Hold(const Path& folder) {
    const Path instance = folder / "instance.lock";
    if (files_.IsOwn(instance) && !locks_.emplace_back(instance).IsHeld()) {
      throw RunTimeError("另一個程式正在使用");
    }
    for (const auto& name : files_.List(folder)) {
      const bool isDatabase = name.ends_with(".mdb") || name.ends_with(".db");
      if (isDatabase && files_.IsOwn(folder / name)) HoldDatabase(folder / name);
    }
    for (const auto& name : files_.ListFolders(folder)) {
      if (name != "set-aside" && files_.IsOwn(folder / name)) Hold(folder / name);
    }
  }

 private:
  // The log becomes part of the file, which works only while nobody else has the database open.
  void HoldDatabase(const Path& path) {
    try {
      auto database = databases_.Open(path, base::Databases::Mode::kReadWrite);
      database->Run("pragma busy_timeout = 0");
      database->Run("pragma journal_mode = delete");
      database->Run("begin exclusive");
      held_.push_back(std::move(database));
    } catch (const base::DamagedDatabase&) {
      return;  // it moves as it is; the start saves what can be read
    }
  }

  const base::Files& files_;
  base::Databases& databases_;
  std::vector<base::FileLock> locks_;
  std::vector<std::unique_ptr<base::Database>> held_;
};

// The steps of a move. The folders are taken out of the temporary root, where no program looks for them then;
// copied beside their place; deleted; and renamed into their place. Each step ends with one rename, by which
// the next start sees what is left to do.
class RecordsMove {
 public:
  RecordsMove(base::Files& files, base::Databases& databases, Path from, StartPlace& place)
      : files_(files),
        databases_(databases),
        from_(std::move(from)),
        place_(place),
        to_(place.root),
        taken_(from_ / fmt::format("marovane-moving-{}", geteuid())) {}

  void Run(std::chrono::milliseconds patience) {
    if (!HasWork()) return;
    std::optional<base::FileLock> lock;
    try {
      lock.emplace(to_ / "records-move.lock", patience);
    } catch (const base::Error& error) {
      return StayForThisRun(error.what());
    }
    if (!lock->IsHeld()) Fail("另一個程式正在搬移學習記錄，請稍後再試");
    try {
      Move();
    } catch (const base::Error& error) {
      StayForThisRun(error.what());
    }
  }

 private:
  // In the order of the steps, so that a move which goes on meanwhile is seen.
  bool HasWork() const {
    if (HasTaken() || HasFound()) return true;
    return std::ranges::any_of(std::initializer_list<Path>{unfinished_, copied_, placing_},
                               [this](const Path& folder) { return files_.FolderExists(folder); });
  }
  bool HasTaken() const { return !from_.empty() && HasOwnFiles(files_, taken_); }
  bool HasFound() const {
    return !from_.empty() && files_.IsOwn(from_ / "marovane") && HasRecords(files_, from_);
  }

  void Move() {
    if (files_.FolderExists(copied_) || files_.FolderExists(placing_)) PutInPlace();
    if (!HasTaken() && !HasFound()) {
      // The system has emptied the folder in the middle of a copy: this is all that is left.
      if (files_.FolderExists(unfinished_)) {
        SetAside(unfinished_, "學習記錄的搬移中斷了，暫存資料夾又已被系統清空。來得及複製的部分放在");
      }
      return;
    }
    TakeOut();
    DeleteFolderIfThere(unfinished_);
    CopyFolder(files_, taken_, copied_);
    PutInPlace();
  }

  void TakeOut() {
    Guard guard(files_, databases_);
    std::vector<const char*> found;
    for (const char* const name : kMovedFolders) {
      if (!files_.IsOwn(from_ / name) || files_.FolderExists(taken_ / name)) continue;
      guard.Hold(from_ / name);
      found.push_back(name);
    }
    files_.CreateFolder(taken_, true);
    if (!files_.IsOwn(taken_)) Fail(fmt::format("{} 不是您的資料夾", taken_.string()));
    files_.MakePrivate(taken_);
    for (const char* const name : found) files_.Rename(from_ / name, taken_ / name);
  }

  void PutInPlace() {
    if (files_.FolderExists(copied_)) {
      if (!from_.empty()) DeleteCopied(files_, taken_, copied_);
      if (HasRecords(files_, to_)) {
        return SetAside(copied_, fmt::format("{} 已有學習記錄，沒有更動。在暫存資料夾中找到的另一份改放在",
                                             to_.string()));
      }
      files_.Rename(copied_, placing_);
    }
    for (const char* const name : kMovedFolders) {
      if (files_.FolderExists(placing_ / name)) PutInPlace(name);
    }
    files_.DeleteEmptyFolder(placing_);
  }

  // Settings without records, which were there before, make room.
  void PutInPlace(const char* name) {
    if (files_.FolderExists(to_ / name)) {
      const Path place = FreeAside(name);
      files_.Rename(to_ / name, place);
      Tell(fmt::format("{} 中原有的檔案改放在 {}。", (to_ / name).string(), place.string()));
    }
    files_.Rename(placing_ / name, to_ / name);
  }

  Path FreeAside(const std::string& name) {
    files_.CreateFolder(to_ / "set-aside", true);
    Path place = to_ / "set-aside" / name;
    for (int i = 2; files_.FolderExists(place); ++i) {
      place.replace_filename(fmt::format("{}-{}", name, i));
    }
    return place;
  }

  void SetAside(const Path& folder, const std::string& what) {
    const Path place = FreeAside("from-temporary-folder");
    files_.Rename(folder, place);
    Tell(fmt::format("{} {}。", what, place.string()));
  }

  // There is no way back for what is in the data folder already.
  void StayForThisRun(const std::string& reason) {
    if (files_.FolderExists(copied_) || files_.FolderExists(placing_)) Fail(reason);
    GiveBack();
    const bool hasOwn = HasRecords(files_, to_);
    if (!hasOwn && !HasFound()) Fail(reason);
    if (!hasOwn) place_.root = from_;
    Tell(fmt::format("系統會清空的暫存資料夾 {} 中有學習記錄，這次無法搬到 {}（{}），下次啟動時會再試。",
                     from_.string(), to_.string(), reason));
  }

  void GiveBack() {
    if (!HasTaken()) return;
    for (const char* const name : kMovedFolders) {
      const bool isFree = !files_.FolderExists(from_ / name);
      if (isFree && files_.FolderExists(taken_ / name)) files_.Rename(taken_ / name, from_ / name);
    }
    files_.DeleteEmptyFolder(taken_);
    DeleteFolderIfThere(unfinished_);  // a full disk has the room again
  }

  void DeleteFolderIfThere(const Path& folder) {
    if (files_.FolderExists(folder)) DeleteFolder(files_, folder);
  }

  void Tell(const std::string& text) { place_.notice += (place_.notice.empty() ? "" : "\n") + text; }

  [[noreturn]] static void Fail(const std::string& reason) { throw RunTimeError(reason); }

  base::Files& files_;
  base::Databases& databases_;
  const Path from_;
  StartPlace& place_;
  const Path to_;
  const Path taken_;
  const Path unfinished_ = to_ / "records-copied.part";
  const Path copied_ = to_ / "records-copied";
  const Path placing_ = to_ / "records-placing";
};

// A file system without rights has none to take.
void MakePrivateIfThere(base::Files& files, const Path& folder) {
  try {
    if (files.FolderExists(folder)) files.MakePrivate(folder);
  } catch (const base::Error&) {
    return;
  }
}

void MakeFolders(base::Files& files, const Environment& environment, const Path& root) {
  files.CreateFolder(root / "marovane", true);
  // A root that the learner has chosen may hold other things than ours.
  if (root == DataFolder(environment)) MakePrivateIfThere(files, root);
  for (const char* const name : {"marovane", "marovane/learners", "marovane/outbox", "marovane/drafts",
                                 "marovane/set-aside", "marovane-server", "tolvex", "set-aside"}) {
    MakePrivateIfThere(files, root / name);
  }
}

}  // namespace

StartPlace FindRecords(base::Files& files, base::Databases& databases, const Environment& environment,
                       std::chrono::milliseconds patience) {
  StartPlace place{WorkingRoot(environment), ""};
  RecordsMove(files, databases, TemporaryRoot(environment), place).Run(patience);
  MakeFolders(files, environment, place.root);
  return place;
}

}  // namespace marovane
