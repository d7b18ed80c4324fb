#include "core/provisioning.h"

#include <sys/wait.h>

#include <cstdlib>

#include "core/settings.h"
#include "core/start_up.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;
using namespace ::testing;

constexpr const char* kAside = "set-aside/20261105-090000-Marovane.mdb";
const std::string kStampLine = std::string(kDatabaseBuild) + "\r\n";

class ProvisioningTest : public CoreTest {
 protected:
  ProvisioningTest() {
    Put(machine.home / "program/giz/mrvdata.giz", "package of records");
    Put(machine.home / "program/giz/tolvex.giz", "package of the engine");
    Unpacks("mrvdata.exe", [this](const base::ProcessStart& start) {
      Put(start.arguments[1] + "Marovane.mdb", "empty");
      Put(start.arguments[1] + "dbver.set", kDatabaseBuild.data());
    });
    Unpacks("tolvex.exe", [this](const base::ProcessStart& start) {
      Put(start.arguments[1] + "data/err4list.mdb", "texts");
    });
  }
  /// Has the unpacker of a package do this work.
  void Unpacks(const std::string& unpacker, FakeProcesses::Work work) {
    machine.processes.Install(unpacker, std::chrono::milliseconds{5}, std::move(work));
  }
  /// The bytes of a record database of this version.
  std::string Database(int version) {
    const fs::path path = machine.home / "made.mdb";
    fs::remove(path);
    machine.realDatabases.Create(path)->Run("pragma user_version = " + std::to_string(version));
    return machine.realFiles.Read(path);
  }
  std::vector<std::string> StartedPrograms() const {
    std::vector<std::string> names;
    for (const auto& start : machine.processes.started) names.push_back(start.program.filename());
    return names;
  }
  fs::path Data(const std::string& name) const { return app.gTempDir + "/marovane/" + name; }
  /// Of a version that is newer than this program, such as before a return to an older one.
  void MakeNewerData() {
    fs::remove_all(Data(""));
    fs::remove_all(app.gEngineDir);
    Put(Data("Marovane.mdb"), kLearners);
    Put(Data("dbver.set"), "20330101-0000\r\n");
    Put(app.gSetupFile, "Pno=4711\r\n");
  }
  void Start() {
    CheckDatabaseBuild(program);
    UnpackDataFiles(program);
  }

  const std::string kLearners = Database(kSchemaVersion + 1);
};

TEST_F(ProvisioningTest, RecordsAreUnpackedOnceAndTheEngineAtEachStart) {
  Put(app.gEngineDir + "tolvex2.exe", "an old engine");
  UnpackDataFiles(program);
  EXPECT_THAT(StartedPrograms(), ElementsAre("mrvdata.exe", "tolvex.exe"));
  EXPECT_EQ(machine.processes.started[0].program, app.gTempDir + "/mrvdata.exe");
  EXPECT_THAT(machine.processes.started[0].arguments, ElementsAre("-d", app.gTempDir + "/marovane/"));
  EXPECT_THAT(machine.processes.started[1].arguments, ElementsAre("-d", app.gTempDir + "/tolvex/"));
  EXPECT_EQ(Content(app.gTempDir + "/mrvdata.exe"), "package of records");
  EXPECT_EQ(Content(app.gEngineDir + "tolvex2.exe"), std::nullopt);
  Put(Data("Marovane.mdb"), kLearners);
  machine.processes.started.clear();
  UnpackDataFiles(program);
  EXPECT_THAT(StartedPrograms(), ElementsAre("tolvex.exe"));
  EXPECT_EQ(Content(Data("Marovane.mdb")), kLearners);
  EXPECT_FALSE(program.frmMessage.IsLoaded());
}

TEST_F(ProvisioningTest, DoesNotWaitForWhatAnotherProgramUnpacks) {
  for (const char* const unpacker : {"mrvdata.exe", "tolvex.exe"}) machine.processes.Add(unpacker);
  UnpackDataFiles(program);
  EXPECT_EQ(Content(Data("Marovane.mdb")), "empty");
  EXPECT_EQ(Content(app.gEngineDir + "data/err4list.mdb"), "texts");
}

TEST_F(ProvisioningTest, SaysWhatTheFirstStartWaitsFor) {
  std::vector<std::string> shown;
  const auto note = [&](const base::ProcessStart&) {
    const FrmMessage& box = *program.frmMessage;
    EXPECT_TRUE(box.Visible && box.picProgress.Visible);
    shown.push_back(box.lblMessage.Caption());
  };
  for (const char* const unpacker : {"mrvdata.exe", "tolvex.exe"}) {
    machine.processes.Install(unpacker, std::chrono::seconds{3}, note);
  }
  UnpackDataFiles(program);
  const std::string text = "\r\n正在檢查與建立必要組件資料中....\r\n";
  EXPECT_THAT(shown, ElementsAre(text + "建立學習記錄", text + "準備錯誤說明"));
  EXPECT_FALSE(program.frmMessage.IsLoaded());
}

TEST_F(ProvisioningTest, WhatCannotBeUnpackedIsReportedAndNothingIsLost) {
  Put(Data("setup.set"), "Pno=1\r\n");
  Unpacks("mrvdata.exe", {});  // refuses its damaged package
  ExpectMessage(Message::kUnexpectedError, kOk, "mrvdata.giz");
  UnpackDataFiles(program);
  ShowMissingData(program);
  fs::remove(machine.home / "program" / "giz" / "tolvex.giz");
  fs::remove_all(app.gEngineDir);
  Put(Data("Marovane.mdb"), "records");
  ExpectMessage(Message::kUnexpectedError, kOk, "tolvex.giz");
  UnpackDataFiles(program);
  ShowMissingData(program);
  EXPECT_EQ(machine.user.Expected(), 0U);
  EXPECT_EQ(Content(Data("setup.set")), "Pno=1\r\n");
  EXPECT_EQ(Content(Data("Marovane.mdb")), "records");
}

TEST_F(ProvisioningTest, FreshHomeHearsOfAMissingDatabaseOnce) {
  std::filesystem::remove_all(app.gTempDir);
  Unpacks("mrvdata.exe", {});
  int attempts = 0;
  program.hall.unpackDataFiles = [&] {
    ++attempts;
    UnpackDataFiles(program);
  };
  program.hall.showMissingData = [this] { ShowMissingData(program); };
  ExpectMessage(Message::kUnexpectedError, kOk, "mrvdata.giz");
  FrmStartUp::PrepareProgram(program);
  EXPECT_EQ(attempts, 2);
  EXPECT_EQ(machine.user.Expected(), 0U);
}

TEST_F(ProvisioningTest, ALostStampIsWrittenAnewAndADatabaseOfANewerVersionIsSetAsideWithItsLog) {
  const std::string present = Database(kSchemaVersion);
  const struct {
    std::string records;
    const char* stamp;
    bool stays;
  } cases[] = {{present, "20140302-2047", true},
               {present, " 20140302-2047 \r\nmore", true},
               {present, "20140302-2048\r\n", true},
               {present, "", true},
               {present, nullptr, true},
               {Database(1), nullptr, true},
               {"damaged", "", true},
               {kLearners, "20140302-2047", true},
               {kLearners, "20330101-0000\r\n", false},
               {kLearners, nullptr, false}};
  for (const auto& each : cases) {
    fs::remove_all(Data(""));
    Put(Data("Marovane.mdb"), each.records);
    if (!each.stays) Put(Data("Marovane.mdb-wal"), "latest");
    if (each.stamp != nullptr) Put(Data("dbver.set"), each.stamp);
    CheckDatabaseBuild(program);
    const char* const what = each.stamp == nullptr ? "(none)" : each.stamp;
    EXPECT_EQ(ReadSetup(program, "NeedSync"), each.stays ? "" : "Y") << what;
    EXPECT_EQ(Content(Data("Marovane.mdb")).has_value(), each.stays) << what;
    if (each.stays) {
      EXPECT_EQ(Content(Data("Marovane.mdb")), each.records) << what;
      EXPECT_THAT(Content(Data("dbver.set")), Optional(HasSubstr(std::string(kDatabaseBuild)))) << what;
      continue;
    }
    EXPECT_EQ(Content(Data(kAside)), each.records);
    EXPECT_EQ(Content(Data(std::string(kAside) + "-wal")), "latest");
  }
  fs::remove_all(Data(""));
  CheckDatabaseBuild(program);
  EXPECT_EQ(ReadSetup(program, "NeedSync"), "Y") << "a fresh folder";
}

TEST_F(ProvisioningTest, NothingThatWasSetAsideIsReplacedInTheSameSecond) {
  for (const char* const records : {"a learner's", "a newer one's"}) {
    Put(Data("Marovane.mdb"), records);
    Put(Data("Marovane.mdb-wal"), records);
    EXPECT_THAT(SetRecordsAside(program), EndsWith("-Marovane.mdb"));
  }
  for (const char* const ending : {"", "-wal"}) {
    const std::string name = std::string("Marovane.mdb") + ending;
    EXPECT_EQ(Content(Data("set-aside/20261105-090000-" + name)), "a learner's");
    EXPECT_EQ(Content(Data("set-aside/20261105-090001-" + name)), "a newer one's");
  }
}

TEST_F(ProvisioningTest, UpdaterCopyFollowsTheInstalledOne) {
  const fs::path installed = machine.home / "program";
  const fs::path copy = app.gTempDir + "/Tessaroon/updater.exe";
  RefreshUpdater(program);
  EXPECT_THAT(machine.realFiles.List(copy.parent_path()), IsEmpty()) << "there is none to keep";
  Put(installed / "updater.exe", "one");
  Put(installed / "updater.exe.version", "1.2\n");
  RefreshUpdater(program);
  EXPECT_EQ(Content(copy), "one");
  EXPECT_EQ(Content(copy.parent_path() / "setup.txt"), installed.string() + "\r\n");
  const struct { const char *version, *kept; } cases[] = {{"1.10", "one"}, {"1.2", "one"}, {"1.3", "two"}};
  Put(installed / "updater.exe", "two");
  for (const auto& [version, kept] : cases) {
    Put(installed / "updater.exe.version", version);
    RefreshUpdater(program);
    EXPECT_EQ(Content(copy), kept) << version << ", compared as text";
  }
  Put(installed / "updater0.exe", "left by an update");
  RefreshUpdater(program);
  EXPECT_EQ(Content(copy), "left by an update");
  EXPECT_EQ(Content(installed / "updater0.exe"), std::nullopt);
  fs::remove(installed / "updater.exe");
  Put(copy.parent_path() / "setup.txt", "/where/the/program/stood/before\r\n");
  RefreshUpdater(program);
  EXPECT_EQ(Content(copy.parent_path() / "setup.txt"), installed.string() + "\r\n")
      << "a copy that was made before learns where the program is now";
}

TEST_F(ProvisioningTest, FailedOrKilledAtAnyStepTheRecordsAndSettingsRemainAndTheNextStartFinishes) {
  for (const bool kills : {false, true}) {
    for (int step = 1;; ++step) {
      SCOPED_TRACE(std::to_string(step) + (kills ? " killed" : " failed"));
      MakeNewerData();
      machine.files.fault.Reset();
      kills ? machine.files.fault.KillAt(step) : machine.files.fault.FailAt(step);
      try {
        Start();
      } catch (const Killed&) {
        program.frmMessage.Unload();
      }
      const bool struck = machine.files.fault.Steps() >= step;
      machine.files.fault.Reset();
      const auto aside = Content(Data(kAside));
      EXPECT_EQ(aside ? aside : Content(Data("Marovane.mdb")), kLearners);
      EXPECT_EQ(ReadSetup(program, "Pno"), "4711");
      Start();
      EXPECT_EQ(Content(Data("Marovane.mdb")), "empty");
      EXPECT_EQ(Content(Data(kAside)), kLearners);
      EXPECT_EQ(Content(app.gEngineDir + "data/err4list.mdb"), "texts");
      EXPECT_EQ(ReadSetup(program, "NeedSync"), "Y");
      EXPECT_EQ(ReadSetup(program, "Pno"), "4711");
      if (struck) continue;
      ASSERT_GT(step, 10) << "no step was met";
      break;
    }
  }
}

/// The package as it was built; its last file cannot be written at the first start.
TEST_F(ProvisioningTest, PackageUnpackedByHalfIsUnpackedAnewAndThenLeftAlone) {
  Put(machine.home / "program/giz/mrvdata.giz", machine.realFiles.Read(fs::path(GIZ_FOLDER) / "mrvdata.giz"));
  int unpackings = 0;
  Unpacks("mrvdata.exe", [&](const base::ProcessStart& start) {
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
  EXPECT_EQ(Content(Data("dbver.set")), kStampLine);
  Put(Data("Marovane.mdb"), kLearners);
  Start();
  EXPECT_EQ(Content(Data("Marovane.mdb")), kLearners);
  EXPECT_EQ(unpackings, 1) << "the database was whole";
}

/// The packages as they were built.
class PackageTest : public CoreTest {
 protected:
  /// The exit status of a package that is unpacked by a shell, which does this first.
  int Unpack(const fs::path& package, const std::string& before = "") {
    const fs::path unpacker = machine.home / "unpacker.exe";
    base::CopyFile(machine.realFiles, package, unpacker);
    machine.realFiles.MakeExecutable(unpacker);
    const std::string line = before + unpacker.string() + " -d " + folder.string() + "/ 2>" + errors.string();
    return WEXITSTATUS(std::system(line.c_str()));
  }
  std::optional<std::string> Unpacked(const std::string& name) const { return Content(folder / name); }
  const fs::path folder = machine.home / "unpacked";
  const fs::path errors = machine.home / "errors";
  const fs::path giz = GIZ_FOLDER;
};

TEST_F(PackageTest, UnpacksEverythingAndKeepsRecordsAndSettings) {
  ASSERT_EQ(Unpack(giz / "mrvdata.giz"), 0);
  ASSERT_EQ(Unpack(giz / "tolvex.giz"), 0);
  EXPECT_EQ(Unpacked("dbver.set"), kStampLine);
  EXPECT_EQ(Unpacked("setup.set"), "autoKeyinPw=1\r\n");
  EXPECT_THAT(Unpacked("Marovane.mdb"), Optional(HasSubstr("oksentence")));
  EXPECT_THAT(Unpacked("data/err4list.mdb"), Optional(HasSubstr("errmain")));
  Put(folder / "setup.set", "FontSize=BIG\r\n");
  Put(folder / "Marovane.mdb", "records");
  Put(folder / "dbver.set", "older");
  ASSERT_EQ(Unpack(giz / "mrvdata.giz"), 0);
  EXPECT_EQ(Unpacked("setup.set"), "FontSize=BIG\r\n");
  EXPECT_EQ(Unpacked("Marovane.mdb"), "records");
  EXPECT_EQ(Unpacked("dbver.set"), kStampLine);
}

TEST_F(PackageTest, AlteredByOneByteOrCutWritesNothing) {
  const std::string whole = machine.realFiles.Read(giz / "tolvex.giz");
  const fs::path altered = machine.home / "altered.exe";
  machine.realFiles.CreateFolder(folder, true);
  const auto name = whole.rfind("data/err4list.mdb");
  ASSERT_NE(name, std::string::npos);
  for (const std::size_t at :
       {name, name + 5000, whole.size() - 60, whole.size() - 30, whole.size() - 12, whole.size() - 1}) {
    std::string bytes = whole;
    bytes[at] = static_cast<char>(bytes[at] ^ 1);
    machine.realFiles.Write(altered, bytes, false);
    EXPECT_EQ(Unpack(altered), 1) << at;
    EXPECT_TRUE(fs::is_empty(folder)) << at;
  }
  machine.realFiles.Write(altered, whole.substr(0, whole.size() - 100), false);
  EXPECT_EQ(Unpack(altered), 1);
  EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(PackageTest, OnAFullDiskLeavesNothingHalfAndNothingLost) {
  Put(folder / "setup.set", "Pno=4711\r\n");
  EXPECT_NE(Unpack(giz / "mrvdata.giz", "ulimit -f 8; "), 0);
  EXPECT_THAT(Content(errors), Optional(HasSubstr("Marovane.mdb")));
  EXPECT_THAT(machine.realFiles.List(folder), ElementsAre("setup.set"));
  EXPECT_EQ(Unpack(giz / "mrvdata.giz"), 0);
  EXPECT_EQ(Unpacked("setup.set"), "Pno=4711\r\n");
  EXPECT_EQ(Unpacked("dbver.set"), kStampLine);
}

}  // namespace

}  // namespace marovane
