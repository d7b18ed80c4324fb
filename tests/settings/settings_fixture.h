// Windows of the settings room, without a screen.
#pragma once

#include <string>

#include "core/settings.h"
#include "platform/host/curl_http.h"
#include "platform/window.h"
#include "tests/core/core_fixture.h"
#include "tests/support/real_server.h"

namespace marovane {

/// Counts what the windows of this room ask of the main window.
class CountingMain : public FakeMain {
 public:
  using FakeMain::FakeMain;
  void PassStringToEngine() override { ++checks; }
  void Form_Load() override { ++loads; }
  int checks = 0;
  int loads = 0;
};

class SettingsRoomTest : public CoreTest {
 protected:
  SettingsRoomTest() {
    FakeHall::Lead(program.hall.frmMain, frmMain);
    machine.http.Route("p_getconn.asp", "ONLINE");
    app.gTransformValue = 200;
    app.gAccountNo = "4711";
  }

  void TearDown() override { EXPECT_EQ(machine.user.Expected(), 0U) << "messages that never came"; }

  std::string Setup(const std::string& key) { return ReadSetup(program, key); }

  CurlHttp curl{machine.loop};
  CountingMain frmMain{machine.machine};
};

}  // namespace marovane
