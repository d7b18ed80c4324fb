// The program itself, from one built version to the next.
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <stdexcept>

#include "tests/support/real_server.h"
#include "tests/support/virtual_loop.h"
#include "tests/updater/updater_fixture.h"

namespace updater {

namespace {

using namespace ::testing;

/// Sees files of some folders written or renamed, from the moment at which it was made.
class FolderWatch {
 public:
  explicit FolderWatch(const std::vector<fs::path>& folders) : changes_(inotify_init1(IN_CLOEXEC)) {
    for (const auto& folder : folders) {
      if (inotify_add_watch(changes_, folder.c_str(), IN_MOVED_TO | IN_CLOSE_WRITE) >= 0) continue;
      close(changes_);
      throw std::runtime_error("cannot watch " + folder.string());
    }
  }
  ~FolderWatch() { close(changes_); }
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  /// Asks again after each change, until nothing has changed for two minutes.
  void WaitUntil(const std::function<bool()>& isMet) const {
    constexpr int kPatience = 120'000;  // milliseconds
    std::array<char, 4096> events{};
    pollfd polled{changes_, POLLIN, 0};
    while (!isMet()) {
      if (poll(&polled, 1, kPatience) == 0 || read(changes_, events.data(), events.size()) < 0) return;
    }
  }

 private:
  int changes_;
};

class RealUpdateTest : public UpdaterTest {
 protected:
  /// A tree as it would be installed, with this program as its terminal edition.
  fs::path Tree(const fs::path& terminal) {
    const fs::path tree = home / ("tree of " + terminal.filename().string());
    fs::create_directories(tree / "bin");
    Take(terminal, tree / "bin/marovane-terminal");
    for (const char* const name : {"marovane-server", "tolvex2.exe"}) {
      Take(fs::path(BIN_FOLDER) / name, tree / "bin" / name);
    }
    for (const char* const folder : {"tolvex", "marovane/giz", "marovane/data"}) {
      fs::create_directories(tree / "share" / folder);
      fs::copy(fs::path(SHARE_FOLDER) / folder, tree / "share" / folder, fs::copy_options::recursive);
    }
    for (const char* const name : {"updater.exe", "updater.exe.version"}) {
      fs::copy_file(fs::path(SHARE_FOLDER) / "marovane" / name, tree / "share/marovane" / name);
    }
    return tree;
  }
  /// Without its symbols, which would only have to be copied about.
  static void Take(const fs::path& program, const fs::path& to) {
    EXPECT_EQ(Shell("strip -o '" + to.string() + "' '" + program.string() + "'").status, 0);
  }
  std::string TerminalLine(const std::string& words) const {
    return "env -i HOME=" + home.Path().string() + " MAROVANE_HOME=" + working.string() +
           " LANG=C.UTF-8 PATH=/usr/bin " + (installation / "current/bin/marovane-terminal").string() + " " +
           words;
  }
  base::RunResult Terminal(const std::string& words) const { return Shell(TerminalLine(words)); }
};

TEST_F(RealUpdateTest, IsUpdatedRefusesABrokenVersionAndGoesBack) {
  const fs::path first = Tree(fs::path(BIN_FOLDER) / "marovane-terminal");
  PublishFolder(first);
  InstallPublished();
  ASSERT_THAT(Terminal("check 'He goes to school every day.'").output, StartsWith("PASS\n"));
  EXPECT_EQ(ReadFile(working / "Tessaroon/setup.txt"), ProgramFolder() + "\r\n")
      << "the program keeps a copy of the updater, and notes for it where the program is";
  const std::string before = Current();

  const fs::path next = Tree(NEXT_TERMINAL);
  PublishFolder(next);
  UpdateServer server(FolderServer(www.string()));
  base::RunResult run = RunUpdater("mrv_updater", server.Host());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(Current(), "1.1.0");
  EXPECT_EQ(Terminal("--version").output, "Marovane 1.1.0\n");
  EXPECT_THAT(Terminal("check 'He go to school every day.'").output, StartsWith("ERRS"));
  EXPECT_THAT(Terminal("records").output,
              AllOf(HasSubstr("He goes to school"), HasSubstr("He *go* to school")))
      << "the records are those of before";

  for (const auto& entry : fs::recursive_directory_iterator(next / "share/tolvex")) {
    if (entry.is_regular_file()) fs::resize_file(entry, entry.file_size() / 2);
  }
  PublishFolder(next);
  run = RunUpdater("mrv_reinstaller", server.Host());
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.errors, HasSubstr("無法正常執行"));
  EXPECT_EQ(Current(), "1.1.0");
  EXPECT_THAT(Terminal("check 'He goes to school every day.'").output, StartsWith("PASS\n"));

  EXPECT_EQ(Shell(updaterCopy.string() + " mrv_rollback").status, 0);
  EXPECT_EQ(Current(), before);
  EXPECT_EQ(Terminal("--version").output, "Marovane " + before + "\n");
}

// The whole way: what the server says, what the learner answers, what the installation names.
TEST_F(RealUpdateTest, LearnerWhoSaysYesHasTheNextVersion) {
  PublishFolder(Tree(fs::path(BIN_FOLDER) / "marovane-terminal"));
  InstallPublished();
  PublishFolder(Tree(NEXT_TERMINAL));
  UpdateServer updates(FolderServer(www.string()));
  Put(home / "server/server.set", "versionMrv=1.1.0\r\nversionBig=1.0.0\r\n");
  VirtualLoop loop;
  const RealServer server(loop, {"--data", (home / "server").string()});
  Put(installation / "current/share/marovane/installation.set",
      "serverRoot=" + server.Root() + "\r\nupdateHost=" + updates.Host() + "\r\n");
  Put(home / "answer", "y\n");
  Put(home / "start", "#!/bin/sh\n" + TerminalLine("records") + "\n");
  fs::create_directories(working / "Tessaroon");
  const FolderWatch watch({installation, working / "Tessaroon"});
  // It asks only at a terminal.
  const base::RunResult run =
      Shell("script -qec 'sh " + (home / "start").string() + "' /dev/null <" + (home / "answer").string());
  EXPECT_THAT(run.output, HasSubstr("目前已有新版程式"));
  watch.WaitUntil([this] { return Current() == "1.1.0" || !Note().empty(); });
  EXPECT_EQ(Note(), "");
  EXPECT_EQ(Current(), "1.1.0") << run.output;
  EXPECT_EQ(ReadFile(working / "Tessaroon/edition.txt"), "MRV\n");
  EXPECT_THAT(Terminal("--version").output, "Marovane 1.1.0\n");
}

}  // namespace

}  // namespace updater
