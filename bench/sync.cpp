// Upload and reload over loopback: how long they take, and how much memory a reload takes.
// sync_bench [rows]
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "bench/statistics.h"
#include "platform/host/curl_http.h"
#include "records/record_db.h"
#include "server/http/server.h"
#include "tests/sync/computer.h"

using namespace marovane;

namespace {

constexpr int kWarmRuns = 20;

/// A value of /proc/self/status, in KiB.
long Status(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) return std::atol(line.c_str() + name.size() + 1);
  }
  return 0;
}

std::string ReadRoot(int fd) {
  std::string root;
  for (char sign = 0; read(fd, &sign, 1) == 1 && sign != '\n';) root += sign;
  return root;
}

std::string Sentence(int i) {
  return fmt::format("Sentence {} is as long as most of what a learner writes, I guess.", i);
}

/// The plainest way to get the rows into the same tables.
double BareInsert(Computer& computer, int rows) {
  base::Database& db = computer.Records().Db();
  return bench::Milliseconds([&] {
    db.Run("begin");
    for (int i = 0; i < rows; ++i) {
      db.Run("insert into oksentence values (?, 'N', ?, '2026-11-05', 'Y', '0', '0', 'N')",
             {fmt::format("{:014}", i), Sentence(i)});
    }
    db.Run("commit");
  });
}

/// Runs in a fresh process of its own, so that the memory is the client's alone.
/// @param goFd where it reads the root when everything is ready
pid_t ForkReload(int goFd) {
  const pid_t child = fork();
  if (child == 0) {
    const std::string root = ReadRoot(goFd);
    Computer computer([](const base::HttpRequest&) { return base::HttpResponse{}; });
    CurlHttp http(computer.machine.loop);
    computer.machine.http.Route("", [&](const base::HttpRequest& request) { return http.Send(request); });
    computer.App().gServerUrlRoot = root;
    const long before = Status("VmRSS:");
    const double time = bench::Milliseconds([&] { computer.Sync("NOMSG"); });
    fmt::print("reload: {:.0f} ms, {} requests, {} rows, memory {:+} KiB at its peak\n", time,
               computer.machine.http.requests.size(), computer.Contents().size(), Status("VmHWM:") - before);
    const std::size_t requests = computer.machine.http.requests.size();
    std::vector<double> times;
    for (int i = 0; i < kWarmRuns; ++i) {
      times.push_back(bench::Milliseconds([&] { computer.Sync("NOMSG"); }));
    }
    bench::Print("quick path", times);
    fmt::print("quick path: {} request each\n",
               static_cast<double>(computer.machine.http.requests.size() - requests) / kWarmRuns);
    std::fflush(stdout);
    _exit(0);
  }
  return child;
}

void MeasureUpload(const std::string& root, int rows) {
  Computer computer([](const base::HttpRequest&) { return base::HttpResponse{}; });
  CurlHttp http(computer.machine.loop);
  computer.machine.http.Route("", [&](const base::HttpRequest& request) { return http.Send(request); });
  computer.App().gServerUrlRoot = root;
  computer.Records().Db().Run("begin");
  for (int i = 0; i < rows; ++i) computer.AddOk(Sentence(i));
  computer.Records().Db().Run("commit");
  const double time = bench::Milliseconds([&] { computer.Sync("UPLOAD"); });
  fmt::print("upload of {} rows: {:.0f} ms, {} requests\n", rows, time,
             computer.machine.http.requests.size());
}

/// Has the server ready in a process of its own, and its root printed to the pipe.
pid_t StartServer(const std::filesystem::path& folder, int readyFd) {
  const pid_t child = fork();
  if (child != 0) return child;
  server::ServerOptions options;
  options.dataDir = folder;
  server::Server server(options, [] { return server::SharedEngine::Judge(); });
  server.EnsureAccount({SyncServer::kAccount, SyncServer::kOldPassword});
  server.Start();
  const std::string root = server.Root() + "\n";
  if (write(readyFd, root.data(), root.size()) < 0) _exit(1);
  pause();
  _exit(0);
}

}  // namespace

int main(int argc, char** argv) {
  const int rows = argc > 1 ? std::atoi(argv[1]) : 50'000;
  constexpr int kPending = 5'000;
  const TempFolder folder;
  int ready[2];
  int go[2];
  if (pipe(ready) != 0 || pipe(go) != 0) return EXIT_FAILURE;
  const pid_t reload = ForkReload(go[0]);
  const pid_t server = StartServer(folder / "data", ready[1]);
  const std::string root = ReadRoot(ready[0]);
  MeasureUpload(root, kPending);
  MeasureUpload(root, rows - kPending);
  {
    Computer computer([](const base::HttpRequest&) { return base::HttpResponse{}; });
    fmt::print("bare insert of {} rows: {:.0f} ms\n", rows, BareInsert(computer, rows));
    std::fflush(stdout);
  }
  if (write(go[1], (root + "\n").c_str(), root.size() + 1) < 0) return EXIT_FAILURE;
  waitpid(reload, nullptr, 0);
  kill(server, SIGTERM);
  waitpid(server, nullptr, 0);
  return EXIT_SUCCESS;
}
