// One program on a machine of the test's own.
#pragma once

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "core/program.h"
#include "core/windows.h"
#include "platform/controls.h"
#include "tests/support/expect_message.h"
#include "tests/support/test_machine.h"

/// A main window that only stands there.
class FakeMain : public Form, public MainWindow {
 public:
  explicit FakeMain(Machine& theMachine) : Form(theMachine, "frmMain") {}
  Form& AsForm() override { return *this; }
  RichTextBox& InputBox() override { return txtInput; }
  Control& MenuButton(int /*index*/) override { return txtInput; }
  void SetInputTextStyle(int /*mode*/) override {}
  std::string CheckInputText(const std::string& /*action*/, const std::string& text) override {
    checked.push_back(text);
    return text;
  }
  void PassStringToEngine() override {}
  void CloseAppProcdure() override { ++closings; }

  RichTextBox txtInput{*this, "txtInput"};
  int closings = 0;
  std::vector<std::string> checked;  ///< texts that CheckInputText was given
};

/// Paths stand as after a start, with TMP as the root; the folders are there.
class CoreTest : public ::testing::Test {
 protected:
  CoreTest() {
    app.gEdition = "MRV";
    app.gTempDir = (machine.home / "tmp").string();
    app.gEngineDir = app.gTempDir + "/tolvex/";
    app.gSetupFile = app.gTempDir + "/marovane/setup.set";
    app.gRegistryFile = app.gEngineDir + "registry.set";
    app.gServerUrlRoot = "http://server/";
    app.gPublisherRoot = "http://publisher/";
    machine.realFiles.CreateFolder(app.gEngineDir, true);
    machine.realFiles.CreateFolder(app.gTempDir + "/marovane", true);
  }

  /// Bytes of a file, nothing when it is missing.
  std::optional<std::string> Content(const std::filesystem::path& path) const {
    if (!machine.realFiles.FileExists(path)) return std::nullopt;
    return machine.realFiles.Read(path);
  }
  void Put(const std::filesystem::path& path, const std::string& bytes) {
    machine.realFiles.CreateFolder(path.parent_path(), true);
    machine.realFiles.Write(path, bytes, true);
  }

  void ExpectMessage(const Message& message, MessageButton answer = kOk, const std::string& detail = "") {
    ::ExpectMessage(machine.user, message, answer, detail);
  }

  TestMachine machine;
  Program program{machine.machine,
                  {.serverRoot = "http://school/",
                   .campusServerRoot = "http://campus/",
                   .updateHost = "updates.example",
                   .webSiteRoot = "http://site/",
                   .translateRoot = "http://translate/",
                   .oldDefaultDomain = ""}};
  AppState& app = program.app;
};
