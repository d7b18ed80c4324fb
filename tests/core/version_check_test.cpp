#include "core/version_check.h"

#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

struct Answer {
  const Message& message;
  MessageButton button = kOk;
};

class VersionCheckTest : public CoreTest {
 protected:
  VersionCheckTest() {
    app.gUpdaterUrlRoot = "updates.example";
    machine.http.Route("p_getconn.asp", "ONLINE");
    Put(app.gSetupFile, "Pno=1\r\n");
    Put(app.gTempDir + "/marovane/Marovane.mdb", "records");
  }
  void InstallUpdater() {
    machine.processes.InstallHanging("updater.exe");
    Put(app.gTempDir + "/Tessaroon/updater.exe", "");
  }
  void ServeVersions(const std::string& small, const std::string& big) {
    machine.http.Route("p_getversion.asp", [=](const base::HttpRequest& request) {
      return base::HttpResponse{200, "", request.body.ends_with("type=big") ? big : small, request.url};
    });
  }
  /// Runs the check with the user's answers. True when the program has ended.
  bool Check(const std::vector<Answer>& answers) {
    for (const auto& [message, button] : answers) ExpectMessage(message, button);
    bool hasEnded = false;
    try {
      CheckVersion(program);
    } catch (const ProgramEnd&) {
      hasEnded = true;
    }
    EXPECT_EQ(machine.user.Expected(), 0U);
    return hasEnded;
  }
};

TEST_F(VersionCheckTest, ClassIsTheFirstOfTheLastTwoDigitsOfTheMiddleNumber) {
  const struct {
    const char *version, *kind;
  } cases[] = {{"2.81.3", "8"}, {"2.5.1", "5"}, {"2.190.1", "9"}, {"2.83", "8"},
               {"2..1", ""},    {"2", ""},      {"", ""},         {"ERR_SERVER", ""}};
  for (const auto& [version, kind] : cases) EXPECT_EQ(VersionClass(version), kind) << version;
}

struct Decision {
  const char *small, *big;
  std::vector<Answer> answers;
  bool hasUpdater, hasEnded;
  const char* word;  ///< with which the updater was started, "" for not at all
};
void PrintTo(const Decision& decision, std::ostream* out) { *out << decision.small << " " << decision.big; }

class VersionDecisionTest : public VersionCheckTest, public ::testing::WithParamInterface<Decision> {};

TEST_P(VersionDecisionTest, ComparesTextsAsksAndStartsTheUpdater) {
  const Decision& decision = GetParam();
  if (decision.hasUpdater) InstallUpdater();
  ServeVersions(decision.small, decision.big);
  EXPECT_EQ(Check(decision.answers), decision.hasEnded);
  EXPECT_TRUE(Content(app.gSetupFile)) << "only class 8 wipes";
  if (*decision.word == '\0') {
    EXPECT_THAT(machine.processes.started, IsEmpty());
    return;
  }
  ASSERT_EQ(machine.processes.started.size(), 1U);
  EXPECT_EQ(machine.processes.started[0].program, app.gTempDir + "/Tessaroon/updater.exe");
  EXPECT_THAT(machine.processes.started[0].arguments, ElementsAre(decision.word, "updates.example"));
  EXPECT_EQ(Content(app.gTempDir + "/Tessaroon/edition.txt"), "MRV\n") << "what the updater starts again";
}

INSTANTIATE_TEST_SUITE_P(
    Branches, VersionDecisionTest,
    ::testing::Values(
        Decision{"1.0.0", "1.0.0", {}, true, false, ""}, Decision{"0.99.9", "0.0.1", {}, true, false, ""},
        Decision{"1.10.0", "1.0.0", {{Message::kNewVersion, kYes}}, true, true, "mrv_updater"},
        Decision{"1.10.0", "1.0.0", {{Message::kNewVersion, kNo}}, true, false, ""},
        Decision{"1.10.0", "1.0.0", {{Message::kNewVersion, kYes}, {Message::kNoUpdater}}, false, false, ""},
        Decision{"1.93.0", "1.0.0", {{Message::kReinstall, kYes}}, true, true, "mrv_reinstaller"},
        Decision{"1.93.0", "1.0.0", {{Message::kReinstall, kNo}}, true, false, ""},
        Decision{"9.0.0", "2.0.0", {{Message::kReinstall, kYes}}, true, true, "mrv_reinstaller"},
        Decision{
            "9.0.0", "2.0.0", {{Message::kReinstall, kNo}, {Message::kReinstallRefused}}, true, true, ""},
        Decision{"9.0.0", "2.0.0", {{Message::kReinstall, kYes}, {Message::kNoUpdater}}, false, false, ""},
        Decision{"ERR_SERVER", "1.0.0", {}, true, false, ""},
        Decision{"1.0.0", "ERR_SERVER", {}, true, false, ""},
        Decision{"<html>404</html>", "v9.0.0", {}, true, false, ""},
        Decision{"9.", "9.0.0 (latest)", {}, true, false, ""}));

TEST_F(VersionCheckTest, PageOfAnErrorIsNoVersion) {
  for (const int status : {404, 500, 302, 204}) {
    machine.http.Route("p_getversion.asp", "9.0.0", status);
    EXPECT_FALSE(Check({})) << status;
  }
}

TEST_F(VersionCheckTest, WhoeverDoesNotWantToWaitStartsWithoutTheAnswer) {
  ServeVersions("9.0.0", "9.0.0");
  for (const char* const page : {"p_getconn.asp", "p_getversion.asp"}) {
    machine.http.breaksOff = [page](const base::HttpRequest& request) { return request.url.ends_with(page); };
    EXPECT_FALSE(Check({})) << page;
  }
}

TEST_F(VersionCheckTest, ClassEightWipesTheDataButSetsRecordsAside) {
  InstallUpdater();
  ServeVersions("1.83.0", "1.0.0");
  EXPECT_FALSE(Check({{Message::kNewVersion, kNo}}));
  EXPECT_TRUE(Content(app.gSetupFile));
  EXPECT_TRUE(Check({{Message::kNewVersion, kYes}}));
  const std::filesystem::path data = app.gTempDir + "/marovane";
  EXPECT_THAT(machine.realFiles.List(data), IsEmpty());
  EXPECT_THAT(machine.realFiles.List(data / "set-aside"), ElementsAre("20261105-090000-Marovane.mdb"));
  EXPECT_EQ(machine.processes.started.at(0).arguments.at(0), "mrv_updater");
  EXPECT_THAT(fakes.frmUpload.modes, ElementsAre("everything")) << "before it";
}

TEST_F(VersionCheckTest, ClassEightLeavesRecordsThatTheServerLacks) {
  InstallUpdater();
  ServeVersions("1.83.0", "1.0.0");
  fakes.frmUpload.sendsEverything = false;
  Put(app.gTempDir + "/marovane/outbox/1.post", "on its way");
  EXPECT_TRUE(Check({{Message::kNewVersion, kYes}}));
  const std::filesystem::path data = app.gTempDir + "/marovane";
  EXPECT_THAT(machine.realFiles.List(data), ElementsAre("Marovane.mdb"));
  EXPECT_EQ(Content(data / "outbox/1.post"), "on its way");
  EXPECT_FALSE(std::filesystem::exists(data / "set-aside"));
  EXPECT_EQ(machine.processes.started.at(0).arguments.at(0), "mrv_updater");
}

class WipeFaultTest : public VersionCheckTest, public ::testing::WithParamInterface<int> {};

TEST_P(WipeFaultTest, FileThatCannotGoDoesNotKeepTheUpdateBack) {
  InstallUpdater();
  ServeVersions("1.83.0", "1.0.0");
  const std::filesystem::path data = app.gTempDir + "/marovane";
  Put(data / "websource.set", "pages");
  machine.files.fault.FailAt(GetParam());
  EXPECT_TRUE(Check({{Message::kNewVersion, kYes}}));
  EXPECT_EQ(machine.processes.started.size(), 1U);
  EXPECT_EQ(machine.realFiles.List(data).size(), 1U) << "only what the fault struck stays";
  const auto aside = Content(data / "set-aside/20261105-090000-Marovane.mdb");
  EXPECT_EQ(aside ? aside : Content(data / "Marovane.mdb"), "records");
}

// The records need a folder and a new place, the two other files go.
INSTANTIATE_TEST_SUITE_P(Steps, WipeFaultTest, ::testing::Range(1, 5));

TEST_F(VersionCheckTest, UpdaterThatDoesNotStartAfterTheWipeLeavesAProgramWithData) {
  Put(app.gTempDir + "/Tessaroon/updater.exe", "no program");
  Put(machine.home / "program/giz/mrvdata.giz", "package of records");
  machine.processes.Install(
      "mrvdata.exe", std::chrono::milliseconds{5},
      [this](const base::ProcessStart& start) { Put(start.arguments[1] + "Marovane.mdb", "empty"); });
  ServeVersions("1.83.0", "1.0.0");
  EXPECT_FALSE(Check({{Message::kNewVersion, kYes}, {Message::kNoUpdater}}));
  EXPECT_EQ(Content(app.gTempDir + "/marovane/Marovane.mdb"), "empty");
  EXPECT_THAT(Content(app.gSetupFile), Optional(HasSubstr("NeedSync=Y")))
      << "the account's data comes back from the server";
}

TEST_F(VersionCheckTest, WhatTheUpdaterRefusedIsShownOnceAndTheStartGoesOn) {
  const std::string note = app.gTempDir + "/Tessaroon/refusal.txt";
  Put(note, "更新清單的簽章不正確");
  ServeVersions("1.0.0", "1.0.0");
  EXPECT_FALSE(Check({}));
  EXPECT_FALSE(Check({}));
  EXPECT_THAT(machine.windows.systemBoxes, ElementsAre(Pair("Marovane 更新", "更新清單的簽章不正確")));
  EXPECT_EQ(Content(note), std::nullopt);
}

TEST_F(VersionCheckTest, WithoutAServerTheStartGoesOn) {
  machine.http.RouteToNowhere("p_getconn.asp");
  EXPECT_FALSE(Check({{Message::kNetworkDown}}));
  machine.http.Route("p_getconn.asp", "ONLINE");
  machine.http.RouteToNowhere("p_getversion.asp");
  EXPECT_FALSE(Check({{Message::kNetworkDown}})) << "it went away between probe and request";
}

}  // namespace

}  // namespace marovane
