#include "core/start_up.h"

#include "core/key_value_file.h"
#include "core/server_access.h"
#include "platform/run_time_error.h"
#include "tests/core/core_fixture.h"

namespace marovane {

namespace {

using namespace ::testing;

class StartUpTest : public CoreTest {
 protected:
  StartUpTest() {
    app = {};
    app.gEdition = "MRV";
    machine.http.RouteToNowhere("p_getconn.asp");
  }
  void PutDebugIni(const std::string& text) { Put(machine.home / "program" / "debug.ini", text); }
  void MakeFolders() {
    machine.realFiles.CreateFolder(app.gEngineDir, true);
    machine.realFiles.CreateFolder(app.gTempDir + "/marovane", true);
  }
  void Start(const std::string& edition) {
    app = {};
    app.gEdition = edition;
    InitApplicationState(program);
  }
};

TEST_F(StartUpTest, RootsDependOnTheEdition) {
  const struct {
    const char *edition, *debugIni;
    const char* roots;  // of publisher, server, files, accounts, updates, web site
  } cases[] = {
      {"MRV", "", "http://school/|http://school/|http://school/||updates.example|http://site/"},
      {"XQD", "", "http://school/|http://school/|http://campus/|http://campus/||http://site/"},
      {"XQD EXTRA", "", "|||||"},
      {"MRV",
       "_ServerUrlRootMRV=http://mine/\r\n_UpdaterUrlRootMRV=up\r\n_ACServerRootMRV=http://ac/\r\n"
       "_WebEnginePublisherRootXQD=http://no/\r\n",
       "http://school/|http://mine/|http://school/|http://ac/|up|http://site/"},
      {"XQD",
       "_UpdaterUrlRootXQD=up\r\n_WebEnginePublisherRootXQD=http://pub/\r\n"
       "_WebEngineFileServerRootXQD=http://files/\r\n_ACServerRootXQD=http://ac/\r\n",
       "http://pub/|http://school/|http://files/|http://ac/||http://site/"},
      {"ABC", "_ServerUrlRootABC=http://abc/\r\n", "|http://abc/||||"},
  };
  for (const auto& [edition, debugIni, roots] : cases) {
    PutDebugIni(debugIni);
    Start(edition);
    EXPECT_EQ(app.gPublisherRoot + "|" + app.gServerUrlRoot + "|" + app.gFileServerRoot + "|" +
                  app.gACServerRoot + "|" + app.gUpdaterUrlRoot + "|" + app.gWebSiteRoot,
              roots)
        << edition << debugIni;
  }
}

TEST_F(StartUpTest, DebugIniSwitchesOffWhatItDoesNotName) {
  const struct {
    const char* text;
    bool web, wbank, detail;
  } cases[] = {{nullptr, true, true, false},  // no file
               {"", false, false, false},
               {"WebEngine=true\r\n", true, false, false},
               {"WebEngine=TRUE\r\nWebEngineWbank=True\r\nDetailMessage= true \r\n", true, true, true},
               {"WebEngine=1\r\nDetailMessage=yes\r\nwebengine=true\r\n", false, false, false}};
  for (const auto& [text, web, wbank, detail] : cases) {
    if (text != nullptr) PutDebugIni(text);
    Start("MRV");
    EXPECT_EQ(app.gUseWebEngine, web) << text;
    EXPECT_EQ(app.gUseWebEngineWbank, wbank) << text;
    EXPECT_EQ(app.gDetailMessage, detail) << text;
  }
  EXPECT_EQ(app.gTransformValue, 240) << "the settings are loaded, too";
}

TEST_F(StartUpTest, WindowIsThereBeforeAnythingIsWaitedFor) {
  MakeFolders();
  const auto expectWindow = [this] { EXPECT_TRUE(fakes.frmSplash.Visible()); };
  machine.http.Route("p_getconn.asp", [&](const base::HttpRequest& request) -> base::HttpResponse {
    expectWindow();
    throw RunTimeError(request.url + ": no connection");
  });
  program.hall.unpackDataFiles = expectWindow;
  program.hall.showPublisherNews = expectWindow;
  program.hall.checkVersion = [this] { IsServerOnline(program); };
  EXPECT_FALSE(fakes.frmSplash.Visible());
  FrmStartUp::PrepareProgram(program);
  EXPECT_THAT(machine.http.requests, SizeIs(1));
}

TEST_F(StartUpTest, ExchangeFileIsFreshAfterEveryStart) {
  const std::string fresh =
      "**settings for tolvex=\r\ncol_suggestion=0\r\ncollocationListHtm=\r\nerrcode=0\r\nfindMistake=0\r\n"
      "qcode=0\r\nsentence=0\r\nhtm4chk=\r\nsynChk=0\r\ncoursePath=\r\n";
  const std::string registry = (machine.home / "tmp/tolvex/registry.set").string();
  for (const std::string before : {"", "sentence=old\r\nsynChk=1\r\n", "\xFF\xFF\r\n"}) {
    Put(registry, before);
    Start("MRV");
    EXPECT_EQ(Content(registry), fresh) << before;
  }
}

TEST_F(StartUpTest, MissingFoldersAreUnpackedOnce) {
  int unpacked = 0;
  program.hall.unpackDataFiles = [&] {
    ++unpacked;
    MakeFolders();
  };
  Start("MRV");
  EXPECT_EQ(unpacked, 0);
  for (const char* const folder : {"tolvex", "marovane"}) {
    std::filesystem::remove_all(machine.home / "tmp" / folder);
    Start("MRV");
    EXPECT_EQ(std::exchange(unpacked, 0), 1) << folder;
  }
}

TEST_F(StartUpTest, DatabasesAreBelowTheWorkingRoot) {
  program.hall.unpackDataFiles = [this] { MakeFolders(); };
  const std::string root = (machine.home / "chosen").string();
  machine.environment.variables["MAROVANE_HOME"] = root;
  Start("MRV");
  EXPECT_EQ(app.gTempDir, root);
  EXPECT_EQ(app.gConnRecords,
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + root + "/marovane/Marovane.mdb;");
  EXPECT_EQ(app.gConnErrList,
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + root + "/tolvex/data/err4list.mdb;");
}

TEST_F(StartUpTest, InstallationValuesBecomeRoots) {
  Put(machine.home / "program" / "installation.set",
      "serverRoot=http://a/b\r\ncampusServerRoot=http://c/\r\nupdateHost=u.example\r\n");
  const auto values = ReadInstallation(machine.files, machine.environment);
  EXPECT_EQ(values.serverRoot, "http://a/b/");
  EXPECT_EQ(values.campusServerRoot, "http://c/");
  EXPECT_EQ(values.updateHost, "u.example");
  EXPECT_EQ(values.webSiteRoot, "");
}

class StepsOfTheStart : public StartUpTest {
 protected:
  StepsOfTheStart() {
    auto& hall = program.hall;
    const auto note = [this](const char* name) { return [this, name] { steps_.emplace_back(name); }; };
    hall.checkDatabaseBuild = note("build");
    hall.unpackDataFiles = note("unpack");
    hall.showMissingData = note("missing");
    hall.refreshUpdater = note("updater");
    hall.showPublisherNews = note("news");
    hall.checkVersion = note("version");
  }
  std::vector<std::string> steps_;
};

TEST_F(StepsOfTheStart, ComeInTheirOrder) {
  for (const auto& [words, edition] : {std::pair{" mrv ", "MRV"}, {"", "MRV"}, {"xqd extra", "XQD EXTRA"}}) {
    machine.environment.commandLine = words;
    steps_.clear();
    FrmStartUp::PrepareProgram(program);
    EXPECT_EQ(app.gEdition, edition);
    EXPECT_THAT(steps_, ElementsAre("build", "unpack", "missing", "updater", "news", "version"));
  }
}

TEST_F(StepsOfTheStart, SecondInstanceEndsBeforeItTouchesAnything) {
  machine.environment.previousInstance = true;
  EXPECT_THROW(FrmStartUp::PrepareProgram(program), ProgramEnd);
  EXPECT_THAT(steps_, IsEmpty());
  EXPECT_EQ(Content(machine.home / "tmp/tolvex/registry.set"), std::nullopt);
}

class FakeLogin : public FakeWindow {
 public:
  explicit FakeLogin(Program& program) : FakeWindow(program.machine, "frmXQDLogin"), app_(program.app) {}
  void Form_Activate() override {
    app_.gXqdLoginOk = succeeds;
    app_.gXqdLoginDone = true;
  }
  bool succeeds = true;

 private:
  AppState& app_;
};

TEST_F(StepsOfTheStart, CampusEditionLogsInFirst) {
  machine.environment.commandLine = "XQD";
  FakeLogin login(program);
  FakeHall::Lead(program.hall.frmXQDLogin, login);
  FrmStartUp::PrepareProgram(program);
  EXPECT_THAT(steps_, ElementsAre("build", "unpack", "missing", "updater", "news",  //
                                  "build", "unpack", "missing", "version"))
      << "the records are those of whoever has logged in";
  login.Hide();
  login.succeeds = false;
  EXPECT_THROW(FrmStartUp::PrepareProgram(program), ProgramEnd) << "an earlier login counts for nothing";
  EXPECT_THAT(steps_, SizeIs(9 + 5)) << "no version check after a refusal";
}

class FrmStartUpTest : public StartUpTest {
 protected:
  FrmStartUp root_{program};
};

TEST_F(FrmStartUpTest, RootStaysOutOfSightAndShowsTheMainWindow) {
  root_.Form_Load();
  EXPECT_EQ(root_.Left(), -10000);
  EXPECT_EQ(root_.Top(), -10000);
  EXPECT_FALSE(root_.Visible());
  EXPECT_TRUE(fakes.frmMain.Visible());
  root_.Form_Unload();
  EXPECT_EQ(fakes.frmMain.closings, 0);
  app.gOpenMain = true;
  root_.Form_Unload();
  EXPECT_EQ(fakes.frmMain.closings, 1);
}

TEST_F(FrmStartUpTest, SplashThatHasGoneIsNotBroughtBack) {
  for (const bool isShown : {false, true}) {
    program.hall.checkVersion = [&] {  // meanwhile
      fakes.frmSplash.Visible = isShown;
      app.gSplashShown = isShown;
    };
    root_.Form_Load();
    EXPECT_EQ(fakes.frmSplash.Visible(), isShown);
  }
}

class LowWindows : public HeadlessWindows {
 public:
  int LogicalDpi() const override { return 120; }
};

TEST_F(StartUpTest, OtherScreenDensityEndsWithABoxOfTheSystem) {
  LowWindows windows;
  Machine dense{machine.loop,      windows,           machine.desktop, machine.http,       machine.files,
                machine.databases, machine.processes, machine.chinese, machine.environment};
  Program other(dense, {});
  EXPECT_THROW(FrmStartUp::PrepareProgram(other), ProgramEnd);
  EXPECT_THAT(windows.systemBoxes,
              ElementsAre(Pair(
                  "警告", "您的視窗目前設定為較大顯示字型，請回復預設字型(96dpi)，才能正常使用本軟體。")));
}

}  // namespace

}  // namespace marovane
