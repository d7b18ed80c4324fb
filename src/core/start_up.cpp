#include "core/start_up.h"

#include "base/files.h"
#include "base/text.h"
#include "core/data_paths.h"
#include "core/key_value_file.h"
#include "core/program.h"
#include "core/records_place.h"
#include "core/settings.h"
#include "platform/environment.h"
#include "platform/window_system.h"

namespace marovane {

namespace {

// Developer overrides. A file that is present but lacks a switch turns that switch off.
void ReadDebugIni(Program& program) {
  auto& app = program.app;
  const Machine& machine = program.machine;
  const std::string path = machine.environment.programFolder / "debug.ini";
  if (!machine.files.FileExists(path)) return;
  const auto value = [&](const std::string& key) {
    return ReadWriteSetFile(machine.files, path, "R", key, "");
  };
  const auto isTrue = [&](const char* key) { return base::Lower(value(key)) == "true"; };
  app.gUseWebEngine = isTrue("WebEngine");
  app.gUseWebEngineWbank = isTrue("WebEngineWbank");
  app.gDetailMessage = isTrue("DetailMessage");
  app.gPublisherRoot = value("_WebEnginePublisherRoot" + app.gEdition);
  app.gACServerRoot = value("_ACServerRoot" + app.gEdition);
  app.gServerUrlRoot = value("_ServerUrlRoot" + app.gEdition);
  app.gFileServerRoot = value("_WebEngineFileServerRoot" + app.gEdition);
  app.gUpdaterUrlRoot = value("_UpdaterUrlRoot" + app.gEdition);
  if (isTrue("DebugWindow")) program.hall.frmDebug->AsForm().Show();
}

void FillIfEmpty(std::string& root, const std::string& value) {
  if (root.empty()) root = value;
}

void FillServerRoots(Program& program) {
  auto& app = program.app;
  const auto& values = program.installation;
  if (app.gEdition == "MRV") {
    FillIfEmpty(app.gPublisherRoot, values.serverRoot);
    FillIfEmpty(app.gServerUrlRoot, values.serverRoot);
    FillIfEmpty(app.gFileServerRoot, values.serverRoot);
    FillIfEmpty(app.gUpdaterUrlRoot, values.updateHost);
  } else if (app.gEdition == "XQD") {
    FillIfEmpty(app.gPublisherRoot, values.serverRoot);
    FillIfEmpty(app.gServerUrlRoot, values.serverRoot);
    FillIfEmpty(app.gACServerRoot, values.campusServerRoot);
    FillIfEmpty(app.gFileServerRoot, values.campusServerRoot);
    app.gUpdaterUrlRoot.clear();
  } else {
    return;
  }
  app.gWebSiteRoot = values.webSiteRoot;
}

void FillPaths(AppState& app) {
  app.gEngineDir = app.gTempDir + "/tolvex/";
  app.gSetupFile = app.gTempDir + "/" + app.gDataDirName + "/setup.set";
  app.gRegistryFile = app.gEngineDir + "registry.set";
}

void ResetExchangeFile(Program& program) {
  base::Files& files = program.machine.files;
  const std::string& path = program.app.gRegistryFile;
  ResetRegistrySet(files, path, "RESET");
  ReadWriteSetFile(files, path, "W", "synChk", "0");
}

}  // namespace

void InitApplicationState(Program& program) {
  auto& app = program.app;
  const Machine& machine = program.machine;
  app.gProductCode = "mrv";
  app.gDataDirName = "marovane";
  app.gEngineLevel = "beta";
  app.gDetailMessage = false;
  app.gUseWebEngine = true;
  app.gUseWebEngineWbank = true;
  ReadDebugIni(program);
  FillServerRoots(program);
  app.gTempDir = WorkingRoot(machine.environment);
  InitConnectionStrings(program);
  app.gMenuExtended = false;
  app.gInputHasFocus = false;
  FillPaths(app);
  if (!machine.files.FolderExists(app.gEngineDir) ||
      !machine.files.FolderExists(app.gTempDir + "/" + app.gDataDirName)) {
    program.hall.unpackDataFiles();
  }
  ResetExchangeFile(program);
  LoadSettings(program);
}

void InitConnectionStrings(Program& program) {
  auto& app = program.app;
  const std::string prefix = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=";
  // At a campus nobody's records are opened before the login.
  app.gConnRecords.clear();
  if (app.gEdition != "XQD") UseRecordsIn(program, app.gTempDir + "/marovane");
  app.gConnErrList = prefix + app.gTempDir + "/tolvex/data/err4list.mdb;";
}

bool CheckScreenDpi(Program& program) { return program.machine.windows.LogicalDpi() == 96; }

FrmStartUp::FrmStartUp(Program& program) : Form(program.machine, "frmStartUp"), program_(program) {}

void FrmStartUp::PrepareProgram(Program& program) {
  auto& hall = program.hall;
  auto& app = program.app;
  app.gEdition = base::Trim(base::Upper(program.machine.environment.commandLine));
  if (app.gEdition.empty()) app.gEdition = "MRV";
  if (program.machine.environment.previousInstance) program.machine.loop.End();
  if (!CheckScreenDpi(program)) {
    program.machine.windows.SystemBox(
        "警告", "您的視窗目前設定為較大顯示字型，請回復預設字型(96dpi)，才能正常使用本軟體。");
    program.machine.loop.End();
  }
  hall.frmSplash->AsForm().Show();  // all that follows may have to wait for a server
  InitApplicationState(program);
  hall.checkDatabaseBuild();
  hall.unpackDataFiles();
  hall.showMissingData();  // once, also where a fresh home has been filled before
  hall.refreshUpdater();
  hall.showPublisherNews();
  if (app.gEdition == "XQD") RunCampusLogin(program);
  hall.checkVersion();
}

void FrmStartUp::RunCampusLogin(Program& program) {
  auto& app = program.app;
  app.gXqdLoginDone = false;
  app.gXqdLoginOk = false;
  Form& frmSplash = program.hall.frmSplash->AsForm();
  const bool isGreeting = frmSplash.Visible;
  frmSplash.Hide();
  program.hall.frmXQDLogin->AsForm().Show();
  program.machine.loop.WaitUntil([&app] { return app.gXqdLoginDone; });
  if (!app.gXqdLoginOk) program.machine.loop.End();
  program.hall.checkDatabaseBuild();  // of the one who has logged in
  program.hall.unpackDataFiles();
  program.hall.showMissingData();
  if (isGreeting) frmSplash.Show();
}

void FrmStartUp::Form_Load() {
  constexpr int kOffScreen = -10000;
  Left = kOffScreen;
  Top = kOffScreen;
  PrepareProgram(program_);
  program_.hall.frmMain->AsForm().Show();
  // Whoever has closed the splash does not want another one.
  if (program_.app.gSplashShown) program_.hall.frmSplash->AsForm().Show();
}

void FrmStartUp::Form_Unload() {
  if (program_.app.gOpenMain) program_.hall.frmMain->CloseAppProcdure();
}

}  // namespace marovane
