// An owner who publishes updates, and a computer that fetches them.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "base/process.h"
#include "tests/support/temp_home.h"

using namespace marovane;

namespace updater {

/// A small program tree made of scripts, which say what a version says.
struct ScriptTree {
  std::string version;
  std::string selfCheck = "exit 0";  ///< what its self-check does
  std::string windows{};             ///< what its windows do; "" for a program without
  std::string page = "page";         ///< a file of it
};

class UpdaterTest : public ::testing::Test {
 protected:
  UpdaterTest();

  /// Makes a tree and publishes it as the newest version.
  void Publish(const ScriptTree& tree);
  /// Publishes a folder as it is.
  void PublishFolder(const std::filesystem::path& tree);
  /// A list that really is the owner's.
  void SignList(const std::string& list);
  /// The computer's first installation, of what is published.
  void InstallPublished();
  /// The program's start, which keeps a copy of the updater.
  void StartInstalled();
  base::RunResult RunUpdater(const std::string& word, const std::string& host);
  base::RunResult RunUpdater(const std::string& word) { return RunUpdater(word, www.string()); }
  /// The folder below versions/ that runs.
  std::string Current() const;
  /// All that is in the installation: path and content, or where a link leads.
  std::map<std::string, std::string> Installed() const;
  /// What the program shows at its next start.
  std::string Note() const;
  /// Runs a line of the shell.
  static base::RunResult Shell(const std::string& line);
  static void Put(const std::filesystem::path& path, const std::string& bytes);

  TempHome home;
  const std::filesystem::path www = home / "www", key = home / "owner.key", installation = home / "marovane",
                              working = home / "tmp";
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
