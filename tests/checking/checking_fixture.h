// A main window with a scripted server, a scripted engine, and real records.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "base/cp950.h"
#include "checking/main_window.h"
#include "core/key_value_file.h"
#include "core/settings.h"
#include "platform/window.h"
#include "records/record_db.h"
#include "tests/records/record_store.h"
#include "tests/support/expect_message.h"
#include "tests/support/fake_hall.h"
#include "tests/support/test_machine.h"

namespace marovane {

inline constexpr Color kGreen = Rgb(153, 204, 0);
inline constexpr Color kRed = Rgb(255, 60, 60);

class CheckingTest : public ::testing::Test {
 protected:
  CheckingTest() {
    app.gEdition = "MRV";
    app.gTempDir = (machine.home / "tmp").string();
    app.gEngineDir = app.gTempDir + "/tolvex/";
    app.gSetupFile = app.gTempDir + "/marovane/setup.set";
    app.gRegistryFile = app.gEngineDir + "registry.set";
    app.gConnRecords = "Data Source=" + recordsPath.string() + ";";
    app.gPublisherRoot = "http://publisher/";
    app.gServerUrlRoot = "http://server/";
    app.gWebSiteRoot = "http://site/";
    app.gAccountPassword = "pw";
    app.gEngineLevel = "beta";
    app.gUseWebEngine = true;
    app.gInputFontSize = 12;
    app.gTransformValue = 200;
    CreateRecords(machine.realDatabases, recordsPath);
    machine.realFiles.CreateFolder(app.gEngineDir, true);
    machine.realFiles.Write(app.gEngineDir + "tolvex2.exe", "", false);
    machine.realFiles.Write(app.gSetupFile, "Pno=4711\r\n", true);
    machine.http.Route("p_all_webengine_get.asp", "OK_http://engine/");
    machine.http.Route("p_passWebEngine_conn.asp", "ONLINE");
    program.hall.frmMain.LeadsTo([this]() -> MainWindow& { return *frmMain; });
  }

  FrmMain& Main() { return *frmMain; }
  /// Puts a sentence into the box, as pasting does, and presses Enter.
  void Enter(const std::string& sentence) {
    if (!Main().Visible()) Main().Show();
    machine.user.Focus(Main().txtInput);
    Main().txtInput.Text = sentence;
    Main().txtInput.SelColor = 0;
    machine.user.Press(Main().txtInput, kKeyEnter);
  }
  void ExpectMessage(const Message& message, MessageButton answer = kOk, const std::string& detail = "") {
    marovane::ExpectMessage(machine.user, message, answer, detail);
  }
  /// The window takes input again, the progress box goes, and every expected message has been shown.
  void ExpectIdle(const std::string& text) {
    EXPECT_TRUE(Main().Enabled());
    EXPECT_EQ(Main().txtInput.Text(), text) << "nothing that was typed is lost";
    EXPECT_EQ(machine.user.Expected(), 0U);
    machine.loop.WaitUntil([this] { return !program.frmMessage.IsLoaded(); });
  }

  using Keys = std::map<std::string, std::string>;
  /// What a good engine does: it writes its page and its keys.
  FakeProcesses::Work Engine(const Keys& keys, const std::string& page = "本句子沒有發現錯誤") {
    return [this, keys, page](const base::ProcessStart&) {
      machine.realFiles.Write(PagePath(), "\r\n" + base::ToCp950(page), false);
      WriteKeys(keys);
      WriteKeys({{"htm4chk", PagePath()}});
    };
  }
  void WriteKeys(const Keys& keys) {
    for (const auto& [key, value] : keys) {
      ReadWriteSetFile(machine.realFiles, app.gRegistryFile, "W", key, value);
    }
  }
  std::string PagePath() const { return app.gEngineDir + "chkresult.htm"; }
  void UseLocalEngine(const FakeProcesses::Work& work) {
    app.gUseWebEngine = false;
    machine.processes.Install("tolvex2.exe", std::chrono::milliseconds{700}, work);
  }

  /// All that stands in the record database, without the ids.
  std::vector<std::string> Recorded() {
    auto all =
        Rows(machine.realDatabases, recordsPath,
             "select 'ok', okFlag, sentence, sDate, upload, essayId, essaySId, haveHtm from oksentence "
             "order by sId",
             8);
    const auto add = [&](const std::string& sql, int columns) {
      const auto rows = Rows(machine.realDatabases, recordsPath, sql, columns);
      all.insert(all.end(), rows.begin(), rows.end());
    };
    add("select 'err', sentence, errcode, sDate, upload, essayId, essaySId, haveHtm from errsentence "
        "order by id",
        8);
    add("select Errcode, times from mistakes order by Errcode", 2);
    add("select * from workRec", 4);
    add("select * from essay", 8);
    return all;
  }
  std::string NeedSync() { return ReadSetup(program, "NeedSync"); }

  TestMachine machine;
  const std::filesystem::path recordsPath = machine.home / "tmp" / "marovane" / "Marovane.mdb";
  Program program{machine.machine, {}};
  AppState& app = program.app;
  RecordDb records{program};
  Window<FrmMain> frmMain{[this] { return std::make_shared<FrmMain>(program, records); }};
  FakeHall fakes{program};
};

}  // namespace marovane
