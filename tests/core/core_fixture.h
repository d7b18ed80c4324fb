// One program on a machine of the test's own.
#pragma once

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "core/program.h"
#include "core/records_place.h"
#include "tests/support/expect_message.h"
#include "tests/support/fake_hall.h"
#include "tests/support/test_machine.h"

namespace marovane {

/// Paths are as after a start, with tmp/ as the root; the folders are there.
class CoreTest : public ::testing::Test {
 protected:
  CoreTest() {
    app.gEdition = "MRV";
    app.gTempDir = (machine.home / "tmp").string();
    app.gEngineDir = app.gTempDir + "/tolvex/";
    app.gSetupFile = app.gTempDir + "/marovane/setup.set";
    app.gRegistryFile = app.gEngineDir + "registry.set";
    UseRecordsIn(program, app.gTempDir + "/marovane");
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
    marovane::ExpectMessage(machine.user, message, answer, detail);
  }

  TestMachine machine;
  Program program{machine.machine,
                  {.serverRoot = "http://school/",
                   .campusServerRoot = "http://campus/",
                   .updateHost = "updates.example",
                   .webSiteRoot = "http://site/",
                   .oldDefaultDomain = ""}};
  AppState& app = program.app;
  FakeHall fakes{program};
};

}  // namespace marovane
