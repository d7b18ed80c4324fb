#include "core/provisioning.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/database.h"
#include "base/day.h"
#include "base/files.h"
#include "base/text.h"
#include "core/message.h"
#include "core/process_control.h"
#include "core/program.h"
#include "core/records_place.h"
#include "core/resume_next.h"
#include "core/settings.h"
#include "platform/environment.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/processes.h"

namespace marovane {

namespace {

using Path = base::Files::Path;

Path DataFolder(const Program& program) { return Path(program.app.gTempDir) / "marovane"; }
Path EngineFolder(const Program& program) { return Path(program.app.gTempDir) / "tolvex"; }
Path RecordDatabase(const Program& program) { return Path(RecordsFolder(program)) / "Marovane.mdb"; }
Path ErrorTexts(const Program& program) { return EngineFolder(program) / "data" / "err4list.mdb"; }

std::string FirstLine(const std::string& text) {
  return base::Trim(text.substr(0, text.find_first_of("\r\n")));
}

bool IsDatabaseFile(const std::string& name) { return name.find(".mdb") != std::string::npos; }

Path AsideFolder(const Program& program) { return Path(RecordsFolder(program)) / "set-aside"; }

// The time of day, or the next second at which nothing was set aside: what is there is never replaced.
std::string FreeStamp(const Program& program) {
  const auto taken = program.machine.files.List(AsideFolder(program));
  auto now = std::chrono::time_point_cast<std::chrono::seconds>(program.machine.loop.Now());
  while (true) {
    const std::chrono::hh_mm_ss time(now - std::chrono::floor<std::chrono::days>(now));
    std::string stamp = fmt::format("{}-{:02}{:02}{:02}-", base::FormatDatePadded(base::DayOf(now), ""),
                                    time.hours().count(), time.minutes().count(), time.seconds().count());
    const auto has = [&stamp](const std::string& name) { return name.starts_with(stamp); };
    if (std::ranges::none_of(taken, has)) return stamp;
    now += std::chrono::seconds{1};
  }
}

// Records are never deleted: they go into a folder of their own, those that belong together under one stamp.
Path SetAside(const Program& program, const std::string& stamp, const std::string& name) {
  base::Files& files = program.machine.files;
  files.CreateFolder(AsideFolder(program), true);
  Path place = AsideFolder(program) / (stamp + name);
  files.Rename(Path(RecordsFolder(program)) / name, place);
  return place;
}

// Runs a self-extracting package to its end.
void RunPackage(Program& program, const std::string& package, const std::string& unpacker,
                const Path& target) {
  base::Files& files = program.machine.files;
  const Path copy = Path(program.app.gTempDir) / unpacker;
  base::CopyFile(files, program.machine.environment.programFolder / "giz" / package, copy);
  files.MakeExecutable(copy);
  Processes& processes = program.machine.processes;
  // By its id: another program of this user may unpack the same at the same time, and its end wakes nobody.
  const int id =
      processes.Start({.program = copy, .arguments = {"-d", target.string() + "/"}, .workingFolder = {}});
  program.machine.loop.WaitUntil([&] { return !IsProcessRunning(processes, id); });
}

// No engine belongs in the working folder: the one beside the program knows where its language data is.
void RemoveEngineCopy(Program& program) {
  const Path copy = EngineFolder(program) / "tolvex2.exe";
  if (program.machine.files.FileExists(copy)) program.machine.files.Delete(copy);
}

// What the learner waits for. It is painted before a slow disk is read.
void ShowUnpacking(Program& program, const char* what) {
  program.app.gProgressDetail = what;
  FrmMessage::ProgressMsgBox(program, Progress::kPreparingData);
  program.machine.loop.DoEvents();
}

// The first settings are for all pupils of a computer, but a package brings them beside the records.
void TakeFirstSettings(Program& program) {
  base::Files& files = program.machine.files;
  const Path unpacked = Path(RecordsFolder(program)) / "setup.set";
  const Path settings = DataFolder(program) / "setup.set";
  if (unpacked == settings || !files.FileExists(unpacked)) return;
  if (files.FileExists(settings)) return files.Delete(unpacked);
  files.Rename(unpacked, settings);
}

void UnpackRecords(Program& program) {
  base::Files& files = program.machine.files;
  files.CreateFolder(DataFolder(program), true);
  if (RecordsFolder(program).empty() || files.FileExists(RecordDatabase(program))) return;
  ShowUnpacking(program, "建立學習記錄");
  UnpackRecordsInto(program, RecordsFolder(program));
  TakeFirstSettings(program);
}

void UnpackEngine(Program& program) {
  base::Files& files = program.machine.files;
  files.CreateFolder(EngineFolder(program), true);
  if (files.FileExists(EngineFolder(program) / "tolvex2.exe") && files.FileExists(ErrorTexts(program)))
    return;
  ShowUnpacking(program, "準備錯誤說明");
  RunPackage(program, "tolvex.giz", "tolvex.exe", EngineFolder(program));
}

// A program's version is in a file beside it; "" without one.
std::string GetFileVersion(const base::Files& files, const Path& program) {
  const Path version = program.string() + ".version";
  return files.FileExists(version) ? FirstLine(files.Read(version)) : "";
}

void CopyProgram(base::Files& files, const Path& from, const Path& to) {
  base::CopyFile(files, from, to);
  files.MakeExecutable(to);
  const Path version = from.string() + ".version";
  if (files.FileExists(version)) base::CopyFile(files, version, to.string() + ".version");
}

void CopyUpdater(Program& program) {
  base::Files& files = program.machine.files;
  const Path installed = program.machine.environment.programFolder;
  const Path folder = Path(program.app.gTempDir) / "Tessaroon";
  const Path copy = folder / "updater.exe";
  files.CreateFolder(folder, true);
  const bool isNewer = GetFileVersion(files, installed / "updater.exe") > GetFileVersion(files, copy);
  if (isNewer || !files.FileExists(copy)) CopyProgram(files, installed / "updater.exe", copy);
  base::RewriteFile(files, folder / "setup.txt", installed.string() + "\r\n", false);
  if (!files.FileExists(installed / "updater0.exe")) return;
  CopyProgram(files, installed / "updater0.exe", copy);
  files.Delete(installed / "updater0.exe");
}

// A damaged one is: what can be read in it is saved later.
bool IsUsable(Program& program) {
  if (!program.machine.files.FileExists(RecordDatabase(program))) return false;
  try {
    const auto db = program.machine.databases.Open(RecordDatabase(program), base::Databases::Mode::kReadOnly);
    return db->Number("pragma user_version") <= kSchemaVersion;
  } catch (const base::DamagedDatabase&) {
    return true;
  }
}

void CheckBuild(Program& program) {
  base::Files& files = program.machine.files;
  const Path stamp = Path(RecordsFolder(program)) / "dbver.set";
  files.CreateFolder(RecordsFolder(program), true);
  if (files.FileExists(stamp) && FirstLine(files.Read(stamp)) == kDatabaseBuild) return;
  if (IsUsable(program)) return base::RewriteFile(files, stamp, std::string(kDatabaseBuild) + "\r\n", false);
  // First, so that a disk that is full leaves the old stamp, and the next start does all of it again.
  WriteNeedSync(program, "Y");
  RunSkippingFailures({[&] { SetRecordsAside(program); }});
}

}  // namespace

std::string SetRecordsAside(Program& program) {
  std::string aside;
  const std::string stamp = FreeStamp(program);
  // What was written last may still be in the log beside the database.
  for (const char* ending : {"", "-wal", "-shm"}) {
    const std::string name = std::string("Marovane.mdb") + ending;
    if (!program.machine.files.FileExists(Path(RecordsFolder(program)) / name)) continue;
    const std::string place = SetAside(program, stamp, name);
    if (aside.empty()) aside = place;
  }
  return aside;
}

std::string AsidePath(const Program& program, const std::string& name) {
  program.machine.files.CreateFolder(AsideFolder(program), true);
  return AsideFolder(program) / (FreeStamp(program) + name);
}

void UnpackRecordsInto(Program& program, const std::string& folder) {
  program.machine.files.CreateFolder(folder, true);
  RunPackage(program, "mrvdata.giz", "mrvdata.exe", folder);
}

void CheckDatabaseBuild(Program& program) {
  if (RecordsFolder(program).empty()) return;
  RunSkippingFailures({[&] { CheckBuild(program); }});
}

void UnpackDataFiles(Program& program) {
  FrmMessage::ProgressMsgBox(program, Progress::kPreparingData);
  RunSkippingFailures(
      {[&] { UnpackRecords(program); }, [&] { UnpackEngine(program); }, [&] { RemoveEngineCopy(program); }});
  program.frmMessage.Unload();
}

void ShowMissingData(Program& program) {
  const base::Files& files = program.machine.files;
  const bool hasRecords = RecordsFolder(program).empty() || files.FileExists(RecordDatabase(program));
  if (hasRecords && files.FileExists(ErrorTexts(program))) return;
  const Path database = hasRecords ? ErrorTexts(program) : RecordDatabase(program);
  program.app.gProgressDetail =
      fmt::format("無法建立資料檔 {}，請檢查磁碟空間；套件 {} 也可能已經損毀，請重新安裝程式",
                  database.filename().string(), hasRecords ? "tolvex.giz" : "mrvdata.giz");
  ShowMessage(program, Message::kUnexpectedError);
}

void RefreshUpdater(Program& program) {
  FrmMessage::ProgressMsgBox(program, Progress::kPreparingData);
  RunSkippingFailures({[&] { CopyUpdater(program); }});
  program.frmMessage.Unload();
}

// The update does not depend on any of it.
void WipeDataFolder(Program& program, Wipe wipe) {
  base::Files& files = program.machine.files;
  if (wipe == Wipe::kRecordsToo) {
    const std::string stamp = FreeStamp(program);
    for (const auto& name : files.List(RecordsFolder(program))) {
      if (IsDatabaseFile(name)) RunSkippingFailures({[&] { SetAside(program, stamp, name); }});
    }
  }
  for (const auto& name : files.List(DataFolder(program))) {
    if (!IsDatabaseFile(name)) RunSkippingFailures({[&] { files.Delete(DataFolder(program) / name); }});
  }
}

}  // namespace marovane
