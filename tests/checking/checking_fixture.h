// A main window with a scripted server, a scripted engine, and real records.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/cp950.h"
#include "checking/main_window.h"
#include "core/key_value_file.h"
#include "core/settings.h"
#include "platform/window.h"
#include "records/record_db.h"
#include "tests/core/core_fixture.h"
#include "tests/records/record_store.h"

namespace marovane {

inline constexpr Color kGreen = Rgb(153, 204, 0);
inline constexpr Color kRed = Rgb(255, 60, 60);

class CheckingTest : public CoreTest {
 protected:
  CheckingTest() {
    app.gConnRecords = "Data Source=" + recordsPath.string() + ";";
    app.gWebSiteRoot = "http://site/";
    app.gAccountPassword = "pw";
    app.gEngineLevel = "beta";
    app.gUseWebEngine = true;
    app.gInputFontSize = 12;
    app.gTransformValue = 200;
    CreateRecords(machine.realDatabases, recordsPath);
    Put(app.gEngineDir + "tolvex2.exe", "");
    Put(app.gSetupFile, "Pno=4711\r\n");
    machine.http.Route("p_all_webengine_get.asp", "OK_http://engine/");
    machine.http.Route("p_passWebEngine_conn.asp", "ONLINE");
    machine.http.Route("p_passWebEngine.asp", "OK_0##p.htm");
    program.hall.frmMain.LeadsTo([this]() -> MainWindow& { return *frmMain; });
  }

  void TearDown() override { EXPECT_EQ(machine.user.Expected(), 0U) << "all expected messages were shown"; }
  FrmMain& Main() { return *frmMain; }
  /// Puts a sentence into the box, as pasting does, and presses Enter.
  void Enter(const std::string& sentence) {
    if (!Main().Visible()) Main().Show();
    machine.user.Focus(Main().txtInput);
    Main().txtInput.Text = sentence;
    Main().txtInput.SelColor = 0;
    machine.user.Press(Main().txtInput, kKeyEnter);
  }
  /// Checks a sentence without the key, as the walk through an essay does.
  void Pass(const std::string& sentence) {
    if (!Main().Visible()) Main().Show();
    Main().txtInput.Text = sentence;
    Main().PassStringToEngine();
  }
  /// The window accepts input again, the progress box goes, and every expected message has been shown.
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
  /// An engine that writes these keys and no page.
  FakeProcesses::Work KeysAlone(const Keys& keys) {
    return [this, keys](const base::ProcessStart&) { WriteKeys(keys); };
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

  void Execute(const std::string& script) {
    machine.realDatabases.Open(recordsPath, base::Databases::Mode::kReadWrite)->RunScript(script);
  }
  std::vector<std::string> Query(const std::string& sql) {
    return Rows(machine.realDatabases, recordsPath, sql);
  }
  /// The Nth statement from now on fails.
  void FailStatement(int step) {
    machine.databases.fault.Reset();
    machine.databases.fault.FailAt(step);
  }
  /// All that is in the record database, without the ids.
  std::vector<std::string> Recorded() {
    std::vector<std::string> all;
    for (const char* const sql :
         {"select 'ok', okFlag, sentence, sDate, upload, essayId, essaySId, haveHtm from oksentence "
          "order by sId",
          "select 'err', sentence, errcode, sDate, upload, essayId, essaySId, haveHtm from errsentence "
          "order by id",
          "select Errcode, times from mistakes order by Errcode", "select * from workRec",
          "select * from essay"}) {
      const auto rows = Query(sql);
      all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
  }
  std::string NeedSync() { return ReadSetup(program, "NeedSync"); }

  const std::filesystem::path recordsPath = machine.home / "tmp" / "marovane" / "Marovane.mdb";
  RecordDb records{program};
  Window<FrmMain> frmMain{[this] { return std::make_shared<FrmMain>(program, records); }};
};

}  // namespace marovane
