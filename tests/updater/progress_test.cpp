// What a learner sees of an update, and that the update does not depend on it.
#include "updater/progress.h"

#include <fmt/format.h>

#include <sstream>

#include "tests/updater/updater_fixture.h"

namespace updater {

namespace {

using namespace ::testing;

TEST(Progress, NamesEachStepAndNeverGoesBack) {
  std::vector<std::string> shown;
  Progress progress(
      [&](int percent, std::string_view step) { shown.push_back(fmt::format("{} {}", percent, step)); });
  progress.Begin(Step::kFinding);
  progress.Begin(Step::kBringing);
  for (const int bytes : {0, 500, 501, 400, 1000, 2000})
    progress.Advance(static_cast<std::uint64_t>(bytes), 1000);
  progress.Advance(0, 0);
  progress.Begin(Step::kTrying);
  progress.Begin(Step::kSwitching);
  progress.Begin(Step::kDone);
  EXPECT_THAT(shown,
              ElementsAre("0 正在尋找新版本", "2 正在下載新版本", "43 正在下載新版本", "85 正在下載新版本",
                          "85 正在試用新版本", "97 正在換成新版本", "100 更新完成"));
  Progress unwatched({});
  unwatched.Begin(Step::kDone);
}

class WatchedUpdate : public InstalledTest {
 protected:
  /// Version 1.0.0 gets a window of this script, and 1.1.0 is published.
  void UseWindow(const std::string& script) {
    const fs::path window = installation / "current/bin/marovane-update-window";
    Put(window, "#!/bin/sh\n" + script + "\n");
    fs::permissions(window, fs::perms::owner_all);
    Publish({.version = "1.1.0", .page = std::string(300'000, 'x')});
    before = "env -u WAYLAND_DISPLAY DISPLAY=:no";
  }
  const std::string shown_ = (home / "shown").string();
};

TEST_F(WatchedUpdate, WritesEachPerCentToItsWindowAndClosesIt) {
  // RunToEnd waits for the window too: it has the updater's errors open.
  UseWindow("cat >" + shown_);
  const base::RunResult run = RunUpdater("mrv_updater");
  EXPECT_EQ(run.status, 0) << run.errors;
  std::istringstream lines(ReadFile(shown_));
  int percent = 0;
  int last = -1;
  std::string step, steps;
  for (std::string name; lines >> percent >> name; last = percent) {
    EXPECT_GE(percent, last);
    if (name != step) steps += name + " ";
    step = name;
  }
  EXPECT_EQ(last, 100);
  EXPECT_EQ(steps, "正在尋找新版本 正在下載新版本 正在試用新版本 正在換成新版本 更新完成 ");
}

TEST_F(WatchedUpdate, GoesOnWithoutItsWindow) {
  const char* const kWindows[] = {"exit 1", "read line; kill -9 $$",
                                  "exec 0<&-; exec tail -f --pid=$PPID /dev/null"};
  for (const char* const window : kWindows) {
    SCOPED_TRACE(window);
    UseWindow(window);
    const base::RunResult run = RunUpdater("mrv_updater");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_THAT(Current(), StartsWith("1.1.0"));
    EXPECT_EQ(Shell(updaterCopy.string() + " mrv_rollback").status, 0);
    EXPECT_EQ(Current(), "1.0.0");
  }
}

TEST_F(WatchedUpdate, ShowsItInTheTerminalWhereThereIsNoScreen) {
  Publish({.version = "1.1.0"});
  const base::RunResult run = Shell("script -qec '" + before + " " + updaterCopy.string() + " mrv_updater " +
                                    www.string() + "' /dev/null");
  EXPECT_THAT(run.output, AllOf(HasSubstr("\r正在下載新版本… 85%"), HasSubstr("\r更新完成… 100%")));
  EXPECT_EQ(Current(), "1.1.0");
}

}  // namespace

}  // namespace updater
