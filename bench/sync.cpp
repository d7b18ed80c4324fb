// Upload and reload over loopback: how long they take, and how much memory a reload takes. The reload beside
// the same rows inserted bare, in turn.
// sync_bench [rows]
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
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
constexpr int kRuns = 5;

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

/// A computer that asks a real server, in a process of its own.
struct RemoteComputer : Computer {
  RemoteComputer() : Computer([](const base::HttpRequest&) { return base::HttpResponse{}; }) {
    machine.http.Route("", [this](const base::HttpRequest& request) {
      base::HttpResponse response;
      waiting += bench::Milliseconds([&] { response = http.Send(request); });
      return response;
    });
  }

  CurlHttp http{machine.loop};
  double waiting = 0;  ///< milliseconds that the server and the way there and back have taken
};

/// What is measured, in milliseconds.
struct Times {
  std::vector<double> bare, empty, emptyWaiting, inPlace, inPlaceWaiting;
};

/// Milliseconds of the plainest way to get the rows of a computer into the same tables: kept statements with
/// bound values, in one transaction.
double BareInsert(Computer& computer) {
  const std::array kTables{"oksentence", "errsentence", "essay"};
  constexpr const char* kInsert = "insert into {} values (?, ?, ?, ?, ?, ?, ?, ?)";
  std::array<std::vector<std::vector<base::DbValue>>, kTables.size()> rows;
  for (std::size_t i = 0; i < kTables.size(); ++i) {
    computer.Records().Db().Run(fmt::format("select * from {} order by rowid", kTables[i]), {},
                                [&](const base::DbRow& row) {
                                  const auto texts = row.Texts();
                                  rows[i].emplace_back(texts.begin(), texts.end());
                                });
  }
  Computer bare([](const base::HttpRequest&) { return base::HttpResponse{}; });
  const auto db = bare.machine.realDatabases.Open(bare.recordsPath, base::Databases::Mode::kReadWrite);
  return bench::Milliseconds([&] {
    db->Run("begin");
    for (std::size_t i = 0; i < kTables.size(); ++i) {
      const std::string sql = fmt::format(kInsert, kTables[i]);
      for (const auto& row : rows[i]) db->Run(sql, row);
    }
    db->Run("commit");
  });
}

/// A reload as the learner waits for it, with all its requests. Adds the milliseconds of it, and of those the
/// ones in which the program waited for the server.
void MeasureReload(RemoteComputer& computer, std::vector<double>& times, std::vector<double>& waiting) {
  const double before = computer.waiting;
  times.push_back(bench::Milliseconds([&] { computer.Sync("NOMSG"); }));
  waiting.push_back(computer.waiting - before);
}

void PrintRatio(const std::string& what, const std::vector<double>& times, const std::vector<double>& waiting,
                double bare) {
  bench::Print(what, times);
  fmt::print("  of that waiting for the server {:.0f} ms; {:.2f} times the bare insert\n",
             bench::Quantile(waiting, 0.5), bench::Quantile(times, 0.5) / bare);
}

void MeasureQuickPath(RemoteComputer& computer) {
  const std::size_t requests = computer.machine.http.requests.size();
  std::vector<double> times;
  for (int i = 0; i < kWarmRuns; ++i) {
    times.push_back(bench::Milliseconds([&] { computer.Sync("NOMSG"); }));
  }
  bench::Print("quick path", times);
  fmt::print("quick path: {} request each\n",
             static_cast<double>(computer.machine.http.requests.size() - requests) / kWarmRuns);
}

/// Runs in a fresh process of its own, so that the memory is the client's alone.
/// @param goFd where it reads the root when everything is ready
pid_t ForkReload(int goFd) {
  const pid_t child = fork();
  if (child != 0) return child;
  const std::string root = ReadRoot(goFd);
  Times times;
  for (int run = 0; run < kRuns; ++run) {
    RemoteComputer computer;
    computer.App().gServerUrlRoot = root;
    const long before = Status("VmRSS:");
    MeasureReload(computer, times.empty, times.emptyWaiting);
    if (run == 0) {
      fmt::print("reload: {} requests, {} rows, memory {:+} KiB at its peak\n",
                 computer.machine.http.requests.size(), computer.Contents().size(),
                 Status("VmHWM:") - before);
    }
    times.bare.push_back(BareInsert(computer));
    RemoteComputer other;  // what it adds brings all rows to the first one again
    other.App().gServerUrlRoot = root;
    other.AddOk("Another one.");
    other.Sync("UPLOAD");
    MeasureReload(computer, times.inPlace, times.inPlaceWaiting);
    if (run == kRuns - 1) MeasureQuickPath(computer);
  }
  bench::Print("bare insert of the same rows", times.bare);
  const double bare = bench::Quantile(times.bare, 0.5);
  PrintRatio("reload of an empty computer", times.empty, times.emptyWaiting, bare);
  PrintRatio("reload of one that has the rows", times.inPlace, times.inPlaceWaiting, bare);
  std::fflush(stdout);
  _exit(0);
}

void MeasureUpload(const std::string& root, int rows) {
  RemoteComputer computer;
  computer.App().gServerUrlRoot = root;
  computer.Records().Db().Run("begin");
  for (int i = 0; i < rows; ++i) {
    if (i % 4 == 0) {
      computer.AddErr(Sentence(i), "AG01");
    } else {
      computer.AddOk(Sentence(i));
    }
  }
  computer.Records().Db().Run("commit");
  const double time = bench::Milliseconds([&] { computer.Sync("UPLOAD"); });
  fmt::print("upload of {} rows: {:.0f} ms, {} requests\n", rows, time,
             computer.machine.http.requests.size());
  std::fflush(stdout);
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
  if (write(go[1], (root + "\n").c_str(), root.size() + 1) < 0) return EXIT_FAILURE;
  waitpid(reload, nullptr, 0);
  kill(server, SIGTERM);
  waitpid(server, nullptr, 0);
  return EXIT_SUCCESS;
}
