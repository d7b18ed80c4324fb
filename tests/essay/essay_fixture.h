// A whole program whose learner writes an essay, with an engine that answers as the test wants.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "app/compose.h"
#include "platform/event_loop.h"
#include "records/essay_records.h"
#include "tests/support/expect_message.h"
#include "tests/support/fake_hall.h"
#include "tests/support/test_machine.h"

namespace marovane {

/// The web engine takes a sentence without an entry in `replies` for right. Real databases, virtual clock.
class EssayTest : public ::testing::Test {
 protected:
  EssayTest();

  /// Leads the doors of splash and upload of a program to windows that do nothing.
  void LeadAside(Composition& whole, FakeUpload& itsUpload);
  /// Opens the essay window with a text in it and sends it. Returns when the walk has ended.
  void Send(const std::string& text);
  void ExpectMessage(const Message& message, MessageButton answer = kOk,
                     const std::function<void()>& meanwhile = {}) {
    marovane::ExpectMessage(machine.user, message, answer, "", meanwhile);
  }
  /// Has the learner act when the walk next asks for a correction.
  void OnCorrection(std::function<void()> act);
  void Correct(const std::string& sentence);
  void BreakOff() {
    OnCorrection([this] { machine.user.Click(composition.frmMain->imgMenu(10)); });
  }

  /// Rows as short lines: "sentence|haveHtm", "sentence|errcode|haveHtm".
  std::vector<std::string> OkRows();
  std::vector<std::string> ErrRows();
  EssayRow LastEssay();
  int Mistakes(const std::string& errcode) { return composition.records.CountMistakes(errcode); }
  std::vector<std::string> Texts(const std::string& sql);
  /// Sentences that the engine was asked about.
  std::vector<std::string> Asked() const;
  FrmEssay& Window() { return *composition.essay.frmEssay; }

  TestMachine machine;
  std::map<std::string, std::string> replies;  ///< of the engine, by sentence
  Composition composition;
  AppState& app = composition.program.app;
  FakeUpload upload{app};

 private:
  std::string Reply(const std::string& body) const;

  FakeSplash splash_{machine.machine};
  std::deque<std::function<void()>> corrections_;
  Subscription correcting_;
};

}  // namespace marovane
