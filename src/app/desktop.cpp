// The desktop edition.
#include <fmt/format.h>

#include <QApplication>

#include "app/compose.h"
#include "app/embedded_server.h"
#include "app/host_machine.h"
#include "core/places.h"
#include "platform/host/instance_lock.h"
#include "platform/processes.h"
#include "platform/run_time_error.h"
#include "qt/qt_application.h"
#include "qt/qt_desktop.h"
#include "qt/qt_loop.h"
#include "qt/qt_windows.h"

namespace {

// Only pages of the program's own servers may give it commands.
bool IsOwnPage(const AppState& app, const std::string& url) {
  for (const auto& root : {app.gServerUrlRoot, app.gWebEngineRoot, app.gFileServerRoot}) {
    if (!root.empty() && url.starts_with(root)) return true;
  }
  return false;
}

QtWindows::Options WindowOptions(const Environment& environment, const AppState*& app) {
  return {.uiFolder = QString::fromStdString(environment.programFolder / "ui"),
          .webLibrary = QString::fromStdString(environment.helperFolder / "libmarovane_qt_web.so"),
          .mayCommand = [&app](const QString& url) {
            return app != nullptr && IsOwnPage(*app, url.toStdString());
          }};
}

void RunDesktop(const std::string& edition) {
  QtLoop loop;
  QtDesktop desktop;
  const AppState* app = nullptr;
  QtWindows windows(loop, WindowOptions(ReadHostEnvironment(edition), app));
  HostMachine host(loop, windows, desktop, edition);
  const InstanceLock lock(WorkingRoot(host.environment) + "/marovane/instance.lock");
  host.environment.previousInstance = !lock.IsHeld();
  InstallationValues installation = ReadInstallation(host.files, host.environment);
  EmbeddedServer server;
  if (lock.IsHeld()) server = StartEmbeddedServer(host.machine, installation);
  Composition composition(host.machine, installation);
  app = &composition.program.app;
  composition.program.hall.frmSplash.LeadsTo([&]() -> Splash& { return *composition.frmSplash; });
  try {
    composition.frmStartUp->Visible();  // the reference is the start
  } catch (const ProgramEnd&) {
    return;
  }
  loop.Run();
}

std::string EditionWord(const QStringList& arguments) { return arguments.mid(1).join(' ').toStdString(); }

}  // namespace

int main(int argc, char** argv) {
  PrepareApplication();
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  try {
    ConfigureApplication(QString::fromStdString(ReadHostEnvironment("").programFolder / "ui"));
    RunDesktop(EditionWord(QApplication::arguments()));
  } catch (const std::exception& error) {
    fmt::print(stderr, "無法執行：{}\n", error.what());
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
