// Settings and logins from end to end, with real servers.
#include "app/compose.h"
#include "core/start_up.h"
#include "tests/settings/settings_fixture.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;

/// One start of the program on a computer that keeps its home.
struct RunningProgram {
  RunningProgram(TestMachine& computer, const std::string& serverRoot, const std::string& campusRoot)
      : curl(computer.loop),
        rooms(computer.machine, {serverRoot, campusRoot, "", "", ""}),
        frmSplash(computer.machine) {
    computer.http.RouteThrough(curl, {"", "p_getconn.asp"});
    FakeHall::Lead(program.hall.frmSplash, frmSplash);
  }

  CurlHttp curl;
  Composition rooms;
  Program& program = rooms.program;
  FakeSplash frmSplash;
  AppState& app = program.app;
};

class SettingsOfTwoComputersTest : public ::testing::Test {
 protected:
  SettingsOfTwoComputersTest() {
    for (TestMachine* const computer : {&first_, &second_}) {
      for (const char* const folder : {"tmp/tolvex", "tmp/marovane", "config/marovane"}) {
        fs::create_directories(computer->home / folder);
      }
    }
    fs::copy_file(Account(first_), Account(second_));
  }
  static std::string Account(const TestMachine& computer) {
    return (computer.home / "config/marovane/account.set").string();
  }
  /// Starts the program up to its main window.
  std::unique_ptr<RunningProgram> Start(TestMachine& computer) {
    auto running = std::make_unique<RunningProgram>(computer, server_.Root(), "");
    running->app.gEdition = "MRV";
    InitApplicationState(running->program);
    running->rooms.frmMain->tmrMouse.Enabled = false;
    running->rooms.frmMain->Show();
    return running;
  }
  static void ExpectChosen(RunningProgram& running) {
    FrmMain& frmMain = *running.rooms.frmMain;
    EXPECT_EQ(frmMain.txtInput.FontSize(), 15);
    EXPECT_TRUE(frmMain.TopMost());
    const AppState& app = running.app;
    EXPECT_EQ(app.gTransformValue, 130);
    EXPECT_EQ(app.gAutoCleanHistory + app.gAutoKeyinPw + app.gAlwaysOnTop + app.gFeedbackErrData, "1111");
    EXPECT_EQ(app.gEduBackground, "g1");
    EXPECT_NE(app.gAccountPassword, "");
  }

  TestMachine first_, second_;
  RealServer server_{first_.loop, {"--data", first_.home / "server", "--account", Account(first_)}};
};

TEST_F(SettingsOfTwoComputersTest, WhatIsSavedHoldsAtOnceAfterARestartAndOnTheOtherComputer) {
  ScriptedUser& user = first_.user;
  {
    const auto running = Start(first_);
    EXPECT_EQ(running->rooms.frmMain->txtInput.FontSize(), 12);
    Window<FrmSetup>& frmSetup = running->rooms.frmSetup;
    frmSetup->Show();
    user.Click(frmSetup->lblFontSize(0));
    for (CheckBox* const box : {&frmSetup->chkAutoCleanRec, &frmSetup->chkAutoInputPassword,
                                &frmSetup->chkAlwaysOnTop, &frmSetup->chkFeedbackErrData}) {
      if (box->Value() == 0) user.Click(*box);
    }
    user.Choose(frmSetup->cboHighestDegree, 5);
    user.Click(frmSetup->lblHighestDegree(0));
    frmSetup->sdrTransform.Value = 130;
    user.Click(frmSetup->picButtons_1);
    ASSERT_FALSE(frmSetup.IsLoaded());
    ExpectChosen(*running);
    first_.loop.WaitUntil([&] { return running->rooms.frmMain->Alpha() == 130; });
  }
  ExpectChosen(*Start(first_));
  ExpectChosen(*Start(second_));
  server_.Kill();
  ExpectChosen(*Start(second_));
}

/// A campus: a server that knows the schools, and the schools.
class CampusTest : public SettingsRoomTest {
 protected:
  CampusTest() {
    machine.environment.commandLine = "xqd";
    Put(machine.home / "campus/schools.set",
        "b101-1=" + Host(school_, "/") + "\r\nc202=" + Host(city_, "/serverside/") + "\r\n");
    campus_ = std::make_unique<RealServer>(
        machine.loop, std::vector<std::string>{"--data", (machine.home / "campus").string()});
  }
  /// @return the folder of its data
  fs::path School(const std::string& name, const std::string& login) {
    Put(machine.home / name / "logins.set", login + "\r\n");
    Put(machine.home / name / "server.set", "schoolCode=S-" + name + "\r\nschoolName=第一中學\r\n");
    return machine.home / name;
  }
  /// Host, port and path of a server, without what it ends in.
  static std::string Host(const RealServer& server, const std::string& end) {
    const std::string address = server.Root().substr(std::string("http://").size());
    EXPECT_TRUE(address.ends_with(end)) << address;
    return address.substr(0, address.size() - end.size());
  }
  struct Try {
    const char *login, *password;  ///< nullptr leaves the box as it is
    const Message* message;        ///< nullptr for none
  };
  /// Starts the campus edition; its user makes these tries at the login window and then leaves it.
  /// @return false when the program has ended; no test goes on from there
  bool Start(const std::vector<Try>& tries) {
    started_ = std::make_unique<RunningProgram>(machine, "http://nowhere/", campus_->Root());
    auto& hall = started_->program.hall;
    hall.checkDatabaseBuild = hall.unpackDataFiles = hall.refreshUpdater = hall.checkVersion =
        hall.showMissingData = hall.showPublisherNews = [] {};
    Window<FrmXQDLogin>& frm = started_->rooms.frmXQDLogin;
    const auto user = machine.windows.onShown;
    machine.windows.onShown = [&](Form& form, bool isModal) {
      if (user) user(form, isModal);
      if (dynamic_cast<FrmXQDLogin*>(&form) != nullptr) machine.loop.Post([&] { Act(frm, tries); });
    };
    bool isOn = true;
    try {
      FrmStartUp::PrepareProgram(started_->program);
    } catch (const ProgramEnd&) {
      isOn = false;
    }
    machine.windows.onShown = user;
    return isOn;
  }
  void Act(Window<FrmXQDLogin>& frm, const std::vector<Try>& tries) {
    for (const Try& each : tries) {
      if (each.message != nullptr) ExpectMessage(*each.message);
      if (each.login != nullptr) {
        frm->txtLogin.Text = "";
        machine.user.Type(frm->txtLogin, each.login);
        machine.user.Press(frm->txtLogin, kKeyEnter);
      }
      if (each.password == nullptr) continue;
      frm->txtPassword.Text = each.password;
      machine.user.Press(frm->txtPassword, kKeyEnter);
    }
    if (frm.IsLoaded()) machine.user.Click(frm->picButtons(1));
  }
  std::string Certificate() const { return Content(machine.home / "tmp/marovane/xqdcert.set").value_or(""); }

  RealServer school_{machine.loop, {"--data", School("school", "b101-1")}};
  RealServer city_{machine.loop, {"--data", School("city", "c202"), "--prefix", "city/serverside"}};
  std::unique_ptr<RealServer> campus_;
  std::unique_ptr<RunningProgram> started_;
};

TEST_F(CampusTest, FirstLoginSetsThePasswordAndLaterOnesWantIt) {
  EXPECT_TRUE(
      Start({{"nobody", nullptr, &Message::kUnknownAccount}, {"b101-1", "first1", &Message::kPasswordSet}}));
  EXPECT_EQ(started_->app.gServerUrlRoot, school_.Root());
  EXPECT_EQ(started_->app.gAccountNo, "b101-1");
  const std::string address = Host(school_, "/");
  EXPECT_EQ(Certificate(), address + "\r\nb101-1\r\nfirst1\r\n");
  EXPECT_EQ(LoginToServer(started_->program, address, "b101-1", "first1"), "OK_S-school#第一中學#");
  EXPECT_EQ(LoginToServer(started_->program, address, "nobody", "first1"), "ERR_NOTFOUND");
  EXPECT_TRUE(Start({{nullptr, "other2", &Message::kWrongPassword}, {nullptr, "first1", nullptr}}))
      << "the login and its school come from the file";
  EXPECT_EQ(started_->app.gServerUrlRoot, school_.Root());
  const std::string kept = Certificate();
  EXPECT_FALSE(Start({{nullptr, "other2", &Message::kWrongPassword}}));
  EXPECT_EQ(Certificate(), kept);
}

TEST_F(CampusTest, SchoolWithItsPagesInAFolderIsFoundThere) {
  EXPECT_TRUE(Start({{"c202", "first1", &Message::kPasswordSet}}));
  EXPECT_EQ(started_->app.gServerUrlRoot, city_.Root());
  EXPECT_EQ(started_->app.gUpdaterUrlRoot, Host(city_, "/serverside/") + "/serverside/update");
  EXPECT_EQ(Certificate(), Host(city_, "/serverside/") + "\r\nc202\r\nfirst1\r\n");
  EXPECT_TRUE(Start({{nullptr, "first1", nullptr}}));
  EXPECT_EQ(started_->app.gServerUrlRoot, city_.Root());
}

TEST_F(CampusTest, ServersThatAreGoneAreReportedAndTheWindowStaysForAnotherTry) {
  EXPECT_TRUE(Start({{"b101-1", "first1", &Message::kPasswordSet}}));
  const std::string kept = Certificate();
  school_.Kill();
  campus_->Kill();
  EXPECT_FALSE(Start({{nullptr, "first1", &Message::kServerNotFound},
                      {nullptr, "first1", &Message::kServerNotFound},
                      {"c202", nullptr, &Message::kServerNotFound}}));
  EXPECT_EQ(Certificate(), kept);
}

}  // namespace

}  // namespace marovane
