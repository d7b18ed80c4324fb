// An owner who publishes updates, and a computer that fetches them.
#pragma once

#include <gmock/gmock.h>
#include <sodium.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "tests/support/local_server.h"
#include "tests/support/run_program.h"
#include "tests/support/temp_home.h"
#include "updater/signature.h"

using namespace marovane;

namespace updater {

namespace fs = std::filesystem;

/// A web server of updates on the loopback, whose replies a test can spoil.
class UpdateServer : public LocalServer {
 public:
  using LocalServer::LocalServer;
  std::string Host() const { return LocalServer::Host() + "/update"; }
};

/// Serves a folder under /update/.
inline std::unique_ptr<httplib::Server> FolderServer(const std::string& folder) {
  auto server = std::make_unique<httplib::Server>();
  server->set_mount_point("/update", folder);
  return server;
}

/// A small program tree made of scripts, which say what a version says.
struct ScriptTree {
  std::string version;
  std::string selfCheck = "exit 0";  ///< what its self-check does
  std::string windows{};             ///< what its windows do; "" for a program without
  std::string page = "page";         ///< a file of it
};

class UpdaterTest : public ::testing::Test {
 protected:
  UpdaterTest() {
    if (sodium_init() < 0) std::abort();
    EXPECT_EQ(Shell(std::string(PACKAGE_PROGRAM) + " key " + key.string()).status, 0);
  }

  /// Makes a tree and publishes it as the newest version.
  void Publish(const ScriptTree& tree) {
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
  /// Publishes a folder as it is.
  void PublishFolder(const fs::path& tree) {
    const base::RunResult run = Shell(std::string(PACKAGE_PROGRAM) + " publish '" + tree.string() + "' " +
                                      key.string() + " " + www.string());
    EXPECT_EQ(run.status, 0) << run.errors;
  }
  /// A list that really is the owner's.
  void SignList(const std::string& list) {
    for (const char* const name : {"mrv_updater.list", "mrv_reinstaller.list"}) {
      Put(www / name, Signed(list, ReadFile(key)));
    }
  }
  /// The computer's first installation, of what is published.
  void InstallPublished() {
    const base::RunResult run = Shell(std::string(UPDATER_PROGRAM) + " mrv_install " + installation.string() +
                                      " " + www.string() + " " + key.string() + ".pub");
    EXPECT_EQ(run.status, 0) << run.errors;
  }
  /// The program's start, which keeps a copy of the updater.
  void StartInstalled() {
    fs::create_directories(working / "Tessaroon");
    fs::copy_file(UPDATER_PROGRAM, updaterCopy, fs::copy_options::overwrite_existing);
    Put(working / "Tessaroon/setup.txt", ProgramFolder() + "\r\n");
  }
  base::RunResult RunUpdater(const std::string& word, const std::string& host) {
    return Shell(before + " " + updaterCopy.string() + " " + word + " '" + host + "'");
  }
  base::RunResult RunUpdater(const std::string& word) { return RunUpdater(word, www.string()); }
  /// The folder below versions/ that runs.
  std::string Current() const {
    std::error_code error;
    return fs::read_symlink(installation / "current", error).filename();
  }
  /// The folder that the installed program calls its own.
  std::string ProgramFolder() const {
    return (installation / "versions" / Current() / "share/marovane").string();
  }
  /// All that is in the installation: path and content, or where a link leads.
  std::map<std::string, std::string> Installed() const {
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
  /// What the program shows at its next start.
  std::string Note() const { return ReadFile(working / "Tessaroon/refusal.txt"); }
  /// Runs a line of the shell.
  static base::RunResult Shell(const std::string& line) {
    return RunProgram({.program = "/bin/sh", .arguments = {"-c", line}});
  }
  static void Put(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    WriteFile(path, bytes);
  }

  TempHome home;
  const fs::path www = home / "www", key = home / "owner.key", installation = home / "marovane",
                 working = home / "tmp", updaterCopy = working / "Tessaroon/updater.exe";
  /// Put before the updater's command line.
  std::string before = "env -u DISPLAY -u WAYLAND_DISPLAY";
};

/// Version 1.0.0 is installed and was started.
class InstalledTest : public UpdaterTest {
 protected:
  InstalledTest() {
    Publish({.version = "1.0.0"});
    InstallPublished();
    StartInstalled();
  }
};

}  // namespace updater
