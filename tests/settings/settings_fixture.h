// Windows of the settings room, without a screen.
#pragma once

#include <string>

#include "core/message.h"
#include "core/message_catalogue.h"
#include "core/settings.h"
#include "platform/window.h"
#include "tests/core/core_fixture.h"

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
    program.hall.frmMain.LeadsTo([this]() -> MainWindow& { return frmMain; });
    machine.http.Route("p_getconn.asp", "ONLINE");
    app.gTransformValue = 200;
    app.gAccountNo = "4711";
  }

  /// Expects a message of this number next and answers it.
  void AnswerMessage(const std::string& msgId, const std::string& caption = "訊息",
                     CommandButton FrmMessage::*answer = &FrmMessage::cmdOK) {
    machine.user.OnModal([this, msgId, caption, answer](Form& form) {
      auto& box = dynamic_cast<FrmMessage&>(form);
      EXPECT_THAT(box.lblMessage.Caption(), ::testing::EndsWith(MessageText(msgId)));
      EXPECT_EQ(box.lblCaption.Caption(), caption) << msgId;
      machine.user.Click(box.*answer);
    });
  }
  std::string Setup(const std::string& key) { return ReadSetup(program, key); }

  CountingMain frmMain{machine.machine};
};
