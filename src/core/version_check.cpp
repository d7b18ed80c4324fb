#include "core/version_check.h"

#include <algorithm>

#include "base/files.h"
#include "base/text.h"
#include "core/message.h"
#include "core/program.h"
#include "core/provisioning.h"
#include "core/resume_next.h"
#include "core/server_access.h"
#include "core/settings.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/processes.h"
#include "platform/run_time_error.h"
#include "platform/window_system.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"

namespace marovane {

namespace {

constexpr const char* kUpdate = "mrv_updater";
constexpr const char* kReinstall = "mrv_reinstaller";
constexpr const char* kClassWipe = "8";
constexpr const char* kClassReinstall = "9";

void ShowNoUpdater(Program& program) { ShowMessage(program, Message::kNoUpdater); }

std::string UpdaterFolder(const Program& program) { return program.app.gTempDir + "/Tessaroon"; }

bool HasUpdater(const Program& program) {
  return program.machine.files.FileExists(UpdaterFolder(program) + "/updater.exe");
}

// What kept the updater from its work, shown once.
void ShowFailedUpdate(Program& program) {
  base::Files& files = program.machine.files;
  const std::string note = UpdaterFolder(program) + "/refusal.txt";
  if (!files.FileExists(note)) return;
  RunSkippingFailures({[&] {  // the start does not depend on it
    const std::string text = files.Read(note);
    files.Delete(note);
    program.machine.windows.SystemBox("Marovane 更新", text);
  }});
}

// Returns when the updater does not start. Otherwise the program ends, and the updater starts the same
// edition again.
void RunUpdater(Program& program, const char* word) {
  const std::string folder = UpdaterFolder(program);
  try {
    base::RewriteFile(program.machine.files, folder + "/edition.txt", program.app.gEdition + "\n", false);
    program.machine.processes.Start({.program = folder + "/updater.exe",
                                     .arguments = {word, program.app.gUpdaterUrlRoot},
                                     .workingFolder = folder,
                                     .hasOwnSession = true});
  } catch (const RunTimeError&) {
    return ShowNoUpdater(program);
  }
  program.machine.loop.End();
}

// Records that the server does not have stay where they are, and the new version goes on with them. Without
// the new version the old one goes on, and needs its data.
void WipeAndUpdate(Program& program) {
  SyncUnsentSettings(program);
  const bool isAllSent = program.hall.frmUpload->SendEverything();
  WipeDataFolder(program, isAllSent ? Wipe::kRecordsToo : Wipe::kAllButRecords);
  RunUpdater(program, kUpdate);
  CheckDatabaseBuild(program);
  UnpackDataFiles(program);
}

void OfferReinstallation(Program& program) {
  if (!Confirm(program, Message::kReinstall)) {
    ShowMessage(program, Message::kReinstallRefused);
    program.machine.loop.End();
  }
  if (!HasUpdater(program)) return ShowNoUpdater(program);
  RunUpdater(program, kReinstall);
}

void OfferUpdate(Program& program, const std::string& version) {
  const std::string kind = VersionClass(version);
  if (!Confirm(program, kind == kClassReinstall ? Message::kReinstall : Message::kNewVersion)) return;
  if (!HasUpdater(program)) return ShowNoUpdater(program);
  if (kind == kClassWipe) return WipeAndUpdate(program);
  RunUpdater(program, kind == kClassReinstall ? kReinstall : kUpdate);
}

// "1.0" to "1.0.0.12"; the error page of some server is none.
bool IsVersion(const std::string& text) {
  const std::vector<std::string> numbers = base::Split(text, ".");
  return numbers.size() >= 2 && numbers.size() <= 4 &&
         std::ranges::all_of(numbers, [](const std::string& number) {
           return !number.empty() && number.find_first_not_of("0123456789") == std::string::npos;
         });
}

}  // namespace

std::string GetServerVersion(Program& program, const std::string& type) try {
  if (!IsServerOnline(program)) return protocol::refusal::kConnectFailed;
  const base::HttpResponse reply =
      SendForm(program, program.app.gServerUrlRoot + protocol::page::kNewestVersion,
               protocol::PlainBody({{"type", type}}));
  constexpr int kFound = 200;
  return reply.status == kFound && IsVersion(reply.body) ? reply.body : "";
} catch (const BrokenOff&) {
  throw;
} catch (const RunTimeError&) {
  return protocol::refusal::kConnectFailed;
}

std::string VersionClass(const std::string& version) {
  const auto point = version.find('.');
  if (point == std::string::npos) return "";
  const std::string behind = version.substr(point + 1);
  const std::string middle = behind.substr(0, behind.find('.'));
  return middle.empty() ? "" : middle.substr(middle.size() < 2 ? 0 : middle.size() - 2, 1);
}

void CheckVersion(Program& program) try {
  ShowFailedUpdate(program);
  const std::string current = Program::Version();
  std::string small;
  std::string big;
  for (const auto& [type, version] : {std::pair{"mrv", &small}, {"big", &big}}) {
    *version = GetServerVersion(program, type);
    if (*version == protocol::refusal::kConnectFailed) return ShowMessage(program, Message::kNetworkDown);
  }
  if (big > current) {
    OfferReinstallation(program);
  } else if (small > current) {
    OfferUpdate(program, small);
  }
} catch (const BrokenOff&) {
  return;  // the next start asks again
}

}  // namespace marovane
