// updater.exe: brings a newer version of the program.
//
//   updater.exe mrv_updater HOST | mrv_reinstaller HOST | mrv_rollback
//       beside it is setup.txt, whose one line names share/marovane of the installed program
//   updater.exe mrv_install FOLDER HOST KEYFILE
#include <fcntl.h>
#include <fmt/format.h>
#include <sodium.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "base/files.h"
#include "base/process.h"
#include "updater/installation.h"
#include "updater/refusal.h"
#include "updater/update.h"
#include "updater/watchers.h"

namespace updater {

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr int kWrongUsage = 64;
constexpr const char* kUsage =
    "用法：updater.exe mrv_updater 更新主機      更新到較新的版本\n"
    "      updater.exe mrv_reinstaller 更新主機  重新安裝\n"
    "      updater.exe mrv_rollback              回到前一個版本\n"
    "      updater.exe mrv_install 資料夾 更新主機 金鑰檔案\n"
    "                                            第一次安裝\n";

std::string FirstLine(const fs::path& path) {
  std::ifstream file(path);
  std::string line;
  std::getline(file, line);
  return line.substr(0, line.find('\r'));
}

// The folder that the program keeps its copy of the updater in.
fs::path OwnFolder() { return fs::read_symlink("/proc/self/exe").parent_path(); }

// The program ends while this one works; a second instance would end at once.
void WaitForProgramEnd(const fs::path& lockFile) {
  constexpr int kMostTries = 300;
  constexpr milliseconds kPause{100};
  const int file = open(lockFile.c_str(), O_RDWR | O_CLOEXEC);
  if (file < 0) return;
  for (int i = 0; i < kMostTries && flock(file, LOCK_EX | LOCK_NB) != 0; ++i) {
    std::this_thread::sleep_for(kPause);
  }
  close(file);
}

// False when the program failed right away. Without a screen nothing is started.
bool StartProgram(const fs::path& tree) try {
  constexpr std::chrono::seconds kWatched{10};
  const fs::path program = tree / "bin" / "marovane";
  if (!HasDisplay() || !fs::exists(program)) return true;
  WaitForProgramEnd(OwnFolder() / ".." / "marovane" / "instance.lock");
  base::ProcessStart start{.program = program, .hasOwnSession = true};
  const std::string edition = FirstLine(OwnFolder() / "edition.txt");
  if (!edition.empty()) start.arguments.push_back(edition);
  return base::Process(start, {.error = STDERR_FILENO}).Wait(kWatched).value_or(EXIT_SUCCESS) == EXIT_SUCCESS;
} catch (const base::Error&) {
  return false;
}

// Not by fmt, which throws when the terminal has gone.
void Complain(const std::string& text) { std::fputs((text + "\n").c_str(), stderr); }

// The program shows it at its next start.
void LeaveWord(const std::string& text) {
  std::ofstream file(OwnFolder() / "refusal.txt", std::ios::trunc);
  file << text;
  Complain(text);
}

void StartAndGoBackWhenItFails(const fs::path& programFolder) {
  Installation installation = FindInstallation(programFolder);
  if (StartProgram(installation.Current())) return;
  SwitchBack(installation, true);
  throw Refusal("新版本無法啟動，已經回到原來的版本。");
}

std::string TextFor(const std::exception& error) {
  if (dynamic_cast<const Refusal*>(&error) != nullptr) return error.what();
  constexpr const char* kDiskFull = "磁碟空間不足，沒有更新任何檔案。請清出一些空間再試。";
  if (const auto* const unwritten = dynamic_cast<const base::FileError*>(&error)) {
    if (unwritten->IsDiskFull()) return kDiskFull;
    return fmt::format("無法寫入 {}（{}），沒有更新任何檔案。", unwritten->path.string(),
                       unwritten->code.message());
  }
  const auto* const failure = dynamic_cast<const fs::filesystem_error*>(&error);
  if (failure != nullptr && failure->code() == std::errc::no_space_on_device) return kDiskFull;
  return fmt::format("更新沒有完成（{}），已保留原來的版本。", error.what());
}

fs::path WindowProgram(const fs::path& programFolder) {
  return programFolder / ".." / ".." / "bin" / "marovane-update-window";
}

// The window goes before the program comes.
void BringUpdate(const fs::path& programFolder, const std::string& host, const std::string& word) {
  Progress progress(OpenWatcher(WindowProgram(programFolder)));
  Update(programFolder, host, word, progress);
}

int UpdateAndStart(const std::string& word, const std::string& host) {
  const fs::path programFolder = FirstLine(OwnFolder() / "setup.txt");
  try {
    BringUpdate(programFolder, host, word);
    StartAndGoBackWhenItFails(programFolder);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    LeaveWord(TextFor(error));
    StartProgram(programFolder / ".." / "..");
    return EXIT_FAILURE;
  }
}

int RunPlainly(const std::vector<std::string>& words) {
  try {
    if (words[0] == "mrv_install") {
      Progress progress(OpenWatcher(WindowProgram(OwnFolder())));
      Install(words[1], words[2], words[3], progress);
      return EXIT_SUCCESS;
    }
    Installation installation = FindInstallation(FirstLine(OwnFolder() / "setup.txt"));
    SwitchBack(installation, false);
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    Complain(TextFor(error));
    return EXIT_FAILURE;
  }
}

}  // namespace

}  // namespace updater

int main(int argc, char** argv) {
  using namespace updater;
  const std::vector<std::string> words(argv + 1, argv + argc);
  umask(S_IWGRP | S_IWOTH);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  const std::string word = words.empty() ? "" : words[0];
  const auto has = [&](const char* name, std::size_t count) { return word == name && words.size() == count; };
  if (sodium_init() < 0) return EXIT_FAILURE;
  if (has("mrv_updater", 2) || has("mrv_reinstaller", 2)) return UpdateAndStart(word, words[1]);
  if (has("mrv_rollback", 1) || has("mrv_install", 4)) return RunPlainly(words);
  std::fputs(kUsage, stderr);
  return kWrongUsage;
}
