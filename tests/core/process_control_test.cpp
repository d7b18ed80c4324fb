#include "core/process_control.h"

#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;
using ProcessControlTest = CoreTest;

TEST_F(ProcessControlTest, MatchesTheEndOfTheNameWhateverItsCase) {
  const int exact = machine.processes.Add("tolvex2.exe");
  const int longer = machine.processes.Add("MyTolvex2.EXE");
  machine.processes.Add("tolvex2.exe.old");
  machine.processes.Add("wexbin.exe");
  EXPECT_TRUE(IsProcessRunning(machine.processes, "TOLVEX2.EXE"));
  EXPECT_FALSE(IsProcessRunning(machine.processes, "olvex3.exe"));
  EXPECT_FALSE(KillProcessByName(machine.processes, "updater.exe"));
  EXPECT_THAT(machine.processes.terminated, IsEmpty());
  EXPECT_TRUE(KillProcessByName(machine.processes, "Tolvex2.exe"));
  EXPECT_THAT(machine.processes.terminated, ElementsAre(exact, longer));
  EXPECT_FALSE(IsProcessRunning(machine.processes, "tolvex2.exe"));
}

TEST_F(ProcessControlTest, HelperIsLookedForInItsFolderAndThenBesideTheProgram) {
  machine.processes.Install("tolvex2.exe", std::chrono::milliseconds{1});
  EXPECT_THROW(StartHelper(program, app.gEngineDir, "tolvex2.exe", {"beta,010203"}), RunTimeError);
  Put(machine.home / "helpers" / "tolvex2.exe", "");
  StartHelper(program, app.gEngineDir, "tolvex2.exe", {"beta,010203"});
  Put(app.gEngineDir + "tolvex2.exe", "");
  StartHelper(program, app.gEngineDir, "tolvex2.exe", {"beta,010203"});
  ASSERT_EQ(machine.processes.started.size(), 2U);
  EXPECT_EQ(machine.processes.started[0].program, machine.home / "helpers" / "tolvex2.exe");
  EXPECT_EQ(machine.processes.started[1].program, app.gEngineDir + "tolvex2.exe");
  for (const auto& start : machine.processes.started) {
    EXPECT_THAT(start.arguments, ElementsAre("beta,010203"));
    EXPECT_EQ(start.workingFolder, app.gEngineDir);
  }
}

}  // namespace

}  // namespace marovane
