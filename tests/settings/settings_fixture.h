// Windows of the settings room, without a screen.
#pragma once

#include <string>

#include "core/settings.h"
#include "platform/window.h"
#include "tests/core/core_fixture.h"

namespace marovane {

/// Counts what the windows of this room want of the main window.
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

  std::string Setup(const std::string& key) { return ReadSetup(program, key); }

  CountingMain frmMain{machine.machine};
};

}  // namespace marovane
