// A whole machine for a test.
#pragma once

#include "base/posix_files.h"
#include "base/sqlite.h"
#include "platform/headless/headless_windows.h"
#include "platform/host/opencc.h"
#include "platform/machine.h"
#include "tests/support/failing_databases.h"
#include "tests/support/failing_files.h"
#include "tests/support/fake_http.h"
#include "tests/support/fake_processes.h"
#include "tests/support/scripted_user.h"
#include "tests/support/temp_home.h"
#include "tests/support/virtual_loop.h"

namespace marovane {

/// Virtual clock, no screen, a scripted server and process table; real files and real SQLite in a home of its
/// own. Each part can be made to fail through its `fault`. The environment may be changed before it is read.
struct TestMachine {
  TempHome home;
  Environment environment = home.MakeEnvironment();
  VirtualLoop loop;
  HeadlessWindows windows;
  HeadlessDesktop desktop;
  FakeHttp http{loop};
  base::PosixFiles realFiles;
  FailingFiles files{realFiles};
  base::SqliteDatabases realDatabases;
  FailingDatabases databases{realDatabases};
  FakeProcesses processes{loop};
  OpenCcConverter chinese;
  Machine machine{loop, windows, desktop, http, files, databases, processes, chinese, environment};
  ScriptedUser user{loop, windows};
};

}  // namespace marovane
