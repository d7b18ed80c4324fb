// Disks that are full and programs that are killed while the working data is made ready.
#include <sys/wait.h>

#include <cstdlib>

#include "core/message.h"
#include "core/provisioning.h"
#include "core/settings.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;
using ::testing::AnyOf;
using ::testing::IsEmpty;
using ::testing::Optional;

constexpr const char* kLearners = "a learner's records";

class ProvisioningFaultTest : public CoreTest {
 protected:
  ProvisioningFaultTest() {
    Put(machine.home / "program/giz/mrvdata.giz", "package of records");
    Put(machine.home / "program/giz/tolvex.giz", "package of the engine");
    machine.processes.Install("mrvdata.exe", std::chrono::milliseconds{5},
                              [this](const base::ProcessStart& start) {
                                Put(start.arguments[1] + "Marovane.mdb", "empty");
                                Put(start.arguments[1] + "dbver.set", kDatabaseBuild.data());
                              });
    machine.processes.Install(
        "tolvex.exe", std::chrono::milliseconds{5},
        [this](const base::ProcessStart& start) { Put(start.arguments[1] + "data/err4list.mdb", "texts"); });
  }
  fs::path Data(const std::string& name) const { return app.gTempDir + "/marovane/" + name; }
  void MakeOlderData() {
    fs::remove_all(Data(""));
    fs::remove_all(app.gEngineDir);
    Put(Data("Marovane.mdb"), kLearners);
    Put(Data("dbver.set"), "20130101-0000\r\n");
    Put(app.gSetupFile, "Pno=4711\r\n");
  }
  void Start() {
    CheckDatabaseBuild(program);
    UnpackDataFiles(program);
  }
  /// The learner's records, wherever they stand.
  std::optional<std::string> Records() const {
    const auto aside = Content(Data("set-aside/20261105-090000-Marovane.mdb"));
    return aside ? aside : Content(Data("Marovane.mdb"));
  }
};

TEST_F(ProvisioningFaultTest, FailedOrKilledAtAnyStepTheRecordsAndSettingsRemainAndTheNextStartFinishes) {
  for (const bool kills : {false, true}) {
    for (int step = 1;; ++step) {
      SCOPED_TRACE(std::to_string(step) + (kills ? " killed" : " failed"));
      MakeOlderData();
      machine.files.fault.Reset();
      if (kills) machine.files.fault.KillAt(step);
      if (!kills) machine.files.fault.FailAt(step);
      try {
        Start();
      } catch (const Killed&) {
        program.frmMessage.Unload();
      }
      const bool struck = machine.files.fault.Steps() >= step;
      machine.files.fault.Reset();
      EXPECT_THAT(Records(), Optional(std::string(kLearners)));
      EXPECT_EQ(ReadSetup(program, "Pno"), "4711");
      Start();
      EXPECT_THAT(Content(Data("Marovane.mdb")), Optional(std::string("empty")));
      EXPECT_THAT(Content(Data("set-aside/20261105-090000-Marovane.mdb")), Optional(std::string(kLearners)));
      EXPECT_THAT(Content(app.gEngineDir + "data/err4list.mdb"), Optional(std::string("texts")));
      EXPECT_EQ(ReadSetup(program, "NeedSync"), "Y");
      EXPECT_EQ(ReadSetup(program, "Pno"), "4711");
      if (struck) continue;
      ASSERT_GT(step, 10) << "no step was met";
      break;
    }
  }
}

/// The package as it was built; its last file cannot be written at the first start.
TEST_F(ProvisioningFaultTest, PackageUnpackedByHalfIsUnpackedAnewAndThenLeftAlone) {
  const std::string package = machine.realFiles.Read(fs::path(GIZ_FOLDER) / "mrvdata.giz");
  Put(machine.home / "program/giz/mrvdata.giz", package);
  int unpackings = 0;
  machine.processes.Install(
      "mrvdata.exe", std::chrono::milliseconds{5}, [&](const base::ProcessStart& start) {
        const std::string line = start.program.string() + " -d " + start.arguments[1] + " 2>/dev/null";
        EXPECT_EQ(WEXITSTATUS(std::system(line.c_str())), ++unpackings == 1 ? 1 : 0);
      });
  fs::create_directories(Data("dbver.set/in the way"));
  Start();
  ASSERT_NE(Content(Data("Marovane.mdb")), std::nullopt);
  ASSERT_EQ(Content(Data("dbver.set")), std::nullopt);
  fs::remove_all(Data("dbver.set"));
  Start();
  EXPECT_NE(Content(Data("Marovane.mdb")), std::nullopt);
  EXPECT_THAT(Content(Data("dbver.set")), Optional(std::string(kDatabaseBuild) + "\r\n"));
  Put(Data("Marovane.mdb"), kLearners);
  Start();
  EXPECT_THAT(Content(Data("Marovane.mdb")), Optional(std::string(kLearners)));
  EXPECT_EQ(unpackings, 2);
}

/// A package as it was built, on a disk that takes only a little.
TEST_F(ProvisioningFaultTest, PackageOnAFullDiskLeavesNothingHalfAndNothingLost) {
  const fs::path unpacker = machine.home / "unpacker.exe";
  const fs::path folder = machine.home / "unpacked";
  base::CopyFile(machine.realFiles, fs::path(GIZ_FOLDER) / "mrvdata.giz", unpacker);
  machine.realFiles.MakeExecutable(unpacker);
  const auto unpack = [&](const std::string& before) {
    const std::string line =
        before + unpacker.string() + " -d " + folder.string() + "/ 2>" + (machine.home / "told").string();
    return WEXITSTATUS(std::system(line.c_str()));
  };
  Put(folder / "setup.set", "Pno=4711\r\n");
  EXPECT_NE(unpack("ulimit -f 8; "), 0);
  EXPECT_THAT(Content(machine.home / "told"), Optional(::testing::HasSubstr("Marovane.mdb")));
  EXPECT_EQ(machine.realFiles.List(folder), std::vector<std::string>{"setup.set"});
  EXPECT_EQ(unpack(""), 0);
  EXPECT_THAT(Content(folder / "setup.set"), Optional(std::string("Pno=4711\r\n")));
  EXPECT_THAT(Content(folder / "dbver.set"), Optional(std::string(kDatabaseBuild) + "\r\n"));
}

}  // namespace

}  // namespace marovane
