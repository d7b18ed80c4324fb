// A machine with real windows for a test: Qt's loop and windows, everything else as in other tests.
#pragma once

#include "base/posix_files.h"
#include "base/sqlite.h"
#include "platform/host/opencc.h"
#include "platform/machine.h"
#include "platform/web_browser.h"
#include "qt/qt_desktop.h"
#include "qt/qt_loop.h"
#include "qt/qt_windows.h"
#include "tests/support/fake_http.h"
#include "tests/support/fake_processes.h"
#include "tests/support/temp_home.h"

namespace marovane {

/// A script as the pages of the program have it.
inline base::Html OwnScript(const base::Html& code) {
  return base::Fill("<script nonce='{}'>{}</script>", PageNonce(), code);
}

/// Windows come from this folder, the web engine from the build.
struct QtMachine {
  explicit QtMachine(const QString& uiFolder)
      : windows(loop, {.uiFolder = uiFolder,
                       .webLibrary = MAROVANE_WEB_LIBRARY,
                       .webRights = {.pictureFolder = MAROVANE_UI_FOLDER,
                                     .ownServer = [this] { return ownServer; },
                                     .mayCommand =
                                         [this](const QString& url) {
                                           return !ownServer.isEmpty() && url.startsWith(ownServer);
                                         },
                                     .proofFor =
                                         [this](const QString& url) {
                                           const bool isOwn =
                                               !ownServer.isEmpty() && url.startsWith(ownServer);
                                           return WebHeader{"Marovane-Token", isOwn ? "secret" : ""};
                                         }}}) {}

  /// Runs the loop until the condition holds; a test that waits in vain fails by its time-out.
  void Wait(const std::function<bool()>& isMet) { loop.WaitUntil(isMet); }
  QWidget& Widget(const Control& control) { return windows.Find(control.Owner())->Find(control)->Widget(); }

  QString ownServer;  ///< its root, "" for none
  TempHome home;
  Environment environment = home.MakeEnvironment();
  QtLoop loop;
  QtWindows windows;
  QtDesktop desktop;
  VirtualLoop idleLoop;  // the fakes count their costs on it
  FakeHttp http{idleLoop};
  base::PosixFiles files;
  base::SqliteDatabases databases;
  FakeProcesses processes{idleLoop};
  OpenCcConverter chinese;
  Machine machine{loop, windows, desktop, http, files, databases, processes, chinese, environment};
};

}  // namespace marovane
