// The real machine, for any loop and any way to show windows.
#pragma once

#include <string>

#include "base/posix_files.h"
#include "base/sqlite.h"
#include "platform/host/curl_http.h"
#include "platform/host/host_environment.h"
#include "platform/host/opencc.h"
#include "platform/host/posix_processes.h"
#include "platform/machine.h"

namespace marovane {

struct HostMachine {
  HostMachine(EventLoop& loop, WindowSystem& windows, Desktop& desktop, const std::string& commandLine)
      : environment(ReadHostEnvironment(commandLine)),
        http(loop),
        processes(loop),
        machine{loop, windows, desktop, http, files, databases, processes, chinese, environment} {}

  Environment environment;
  CurlHttp http;
  base::PosixFiles files;
  base::SqliteDatabases databases;
  PosixProcesses processes;
  OpenCcConverter chinese;
  Machine machine;
};

}  // namespace marovane
