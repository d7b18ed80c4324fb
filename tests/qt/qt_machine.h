// A machine with real windows for a test: Qt's loop and windows, everything else as in other tests.
#pragma once

#include "base/posix_files.h"
#include "base/sqlite.h"
#include "platform/host/opencc.h"
#include "platform/machine.h"
#include "qt/qt_desktop.h"
#include "qt/qt_loop.h"
#include "qt/qt_windows.h"
#include "tests/support/fake_http.h"
#include "tests/support/fake_processes.h"
#include "tests/support/temp_home.h"

/// Windows come from the folder given; the web engine from the build.
struct QtMachine {
  explicit QtMachine(const QString& uiFolder)
      : windows(loop, {uiFolder, MAROVANE_WEB_LIBRARY,
                       [this](const QString& url) {
                         return !trustedPrefix.isEmpty() && url.startsWith(trustedPrefix);
                       },
                       [this] { ++activations; }}) {}

  /// Runs the loop until the condition holds; a test that waits in vain fails by its time-out.
  void Wait(const std::function<bool()>& isMet) { loop.WaitUntil(isMet); }
  QWidget& Widget(const Control& control) { return windows.Find(control.Owner())->Find(control)->Widget(); }

  QString trustedPrefix;
  int activations = 0;  ///< by a user who comes back from another program
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
