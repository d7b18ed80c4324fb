#include "app/desktop_program.h"

#include <chrono>

#include "platform/run_time_error.h"
#include "protocol/headers.h"

namespace marovane {

namespace {

// A program that was closed just now may still be sending something.
constexpr std::chrono::seconds kEndOfTheLast{5};

StartPlace FindRecordsOnHost(const std::string& edition) {
  base::PosixFiles files;
  base::SqliteDatabases databases;
  return FindRecords(files, databases, ReadHostEnvironment(edition));
}

}  // namespace

DesktopProgram::DesktopProgram(const std::string& edition)
    : windows_(loop_, WindowOptions(edition)),
      place_(FindRecordsOnHost(edition)),
      lock_(place_.root + "/marovane/instance.lock", kEndOfTheLast),
      host_(loop_, windows_, desktop_, edition) {
  host_.environment.previousInstance = !lock_.IsHeld();
  host_.environment.variables["MAROVANE_HOME"] = place_.root;
  InstallationValues installation = ReadInstallation(host_.files, host_.environment);
  if (lock_.IsHeld()) server_ = StartEmbeddedServer(host_.machine, installation);
  rooms_ = std::make_unique<Composition>(host_.machine, installation);
}

bool DesktopProgram::Start() {
  if (lock_.IsHeld() && !place_.notice.empty()) windows_.SystemBox("Marovane", place_.notice);
  try {
    rooms_->frmStartUp.Load();
  } catch (const ProgramEnd&) {
    return false;
  }
  return true;
}

QtWindows::Options DesktopProgram::WindowOptions(const std::string& edition) {
  const Environment environment = ReadHostEnvironment(edition);
  const QString uiFolder = QString::fromStdString(environment.programFolder / "ui");
  return {.uiFolder = uiFolder,
          .webLibrary = QString::fromStdString(environment.helperFolder / "libmarovane_qt_web.so"),
          .webRights = {.pictureFolder = uiFolder,
                        .ownServer = [this] { return QString::fromStdString(ServerRoot()); },
                        .mayCommand = [this](const QString& url) { return IsOwnPage(url.toStdString()); },
                        .proofFor = [this](const QString& url) { return ProofFor(url.toStdString()); }}};
}

std::string DesktopProgram::ServerRoot() const { return rooms_ ? rooms_->program.app.gServerUrlRoot : ""; }

WebHeader DesktopProgram::ProofFor(const std::string& url) const {
  if (!rooms_) return {};
  const Program& program = rooms_->program;
  const std::string token = program.proof.TokenFor(url, program.app.gAccountNo);
  return {.name = protocol::header::kToken, .value = QByteArray::fromStdString(token)};
}

// Only pages of the program's own servers may give it commands.
bool DesktopProgram::IsOwnPage(const std::string& url) const {
  if (!rooms_) return false;
  const AppState& app = rooms_->program.app;
  for (const auto& root : {app.gServerUrlRoot, app.gWebEngineRoot, app.gFileServerRoot}) {
    if (!root.empty() && url.starts_with(root)) return true;
  }
  return false;
}

}  // namespace marovane
