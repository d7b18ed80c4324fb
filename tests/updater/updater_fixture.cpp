#include "tests/updater/updater_fixture.h"

#include <sodium.h>

#include <cstdlib>

#include "tests/support/run_program.h"
#include "updater/signature.h"

using namespace marovane;

namespace updater {

namespace fs = std::filesystem;

UpdaterTest::UpdaterTest() {
  if (sodium_init() < 0) std::abort();
  EXPECT_EQ(Shell(std::string(PACKAGE_PROGRAM) + " key " + key.string()).status, 0);
}

base::RunResult UpdaterTest::Shell(const std::string& line) {
  return RunProgram({.program = "/bin/sh", .arguments = {"-c", line}});
}

void UpdaterTest::Put(const fs::path& path, const std::string& bytes) {
  fs::create_directories(path.parent_path());
  WriteFile(path, bytes);
}

void UpdaterTest::Publish(const ScriptTree& tree) {
  const fs::path folder = home / ("tree-" + tree.version);
  fs::remove_all(folder);
  const std::string says =
      "#!/bin/sh\nif [ \"$1\" = --version ]; then echo Marovane " + tree.version + "; exit; fi\n";
  Put(folder / "bin/marovane-terminal", says + tree.selfCheck + "\n");
  if (!tree.windows.empty()) Put(folder / "bin/marovane", says + tree.windows + "\n");
  for (const auto& entry : fs::directory_iterator(folder / "bin")) {
    fs::permissions(entry, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
  }
  Put(folder / "share/marovane/ui/page.htm", tree.page);
  Put(folder / "share/marovane/same.txt", "the same in all versions");
  PublishFolder(folder);
}

void UpdaterTest::PublishFolder(const fs::path& tree) {
  const base::RunResult run = Shell(std::string(PACKAGE_PROGRAM) + " publish '" + tree.string() + "' " +
                                    key.string() + " " + www.string());
  EXPECT_EQ(run.status, 0) << run.errors;
}

void UpdaterTest::SignList(const std::string& list) {
  for (const char* const name : {"mrv_updater.list", "mrv_reinstaller.list"}) {
    Put(www / name, Signed(list, ReadFile(key)));
  }
}

void UpdaterTest::InstallPublished() {
  const base::RunResult run = Shell(std::string(UPDATER_PROGRAM) + " mrv_install " + installation.string() +
                                    " " + www.string() + " " + key.string() + ".pub");
  EXPECT_EQ(run.status, 0) << run.errors;
}

void UpdaterTest::StartInstalled() {
  fs::create_directories(working / "Tessaroon");
  fs::copy_file(UPDATER_PROGRAM, working / "Tessaroon/updater.exe", fs::copy_options::overwrite_existing);
  Put(working / "Tessaroon/setup.txt",
      (installation / "versions" / Current() / "share/marovane").string() + "\r\n");
}

base::RunResult UpdaterTest::RunUpdater(const std::string& word, const std::string& host) {
  return Shell(before + " " + (working / "Tessaroon/updater.exe").string() + " " + word + " '" + host + "'");
}

std::string UpdaterTest::Current() const {
  std::error_code error;
  return fs::read_symlink(installation / "current", error).filename();
}

std::map<std::string, std::string> UpdaterTest::Installed() const {
  std::map<std::string, std::string> all;
  for (const auto& entry : fs::recursive_directory_iterator(installation)) {
    const std::string path = entry.path().lexically_relative(installation);
    if (entry.is_symlink()) {
      all[path] = fs::read_symlink(entry.path());
    } else if (entry.is_regular_file()) {
      all[path] = ReadFile(entry.path());
    }
  }
  return all;
}

std::string UpdaterTest::Note() const { return ReadFile(working / "Tessaroon/refusal.txt"); }

}  // namespace updater
