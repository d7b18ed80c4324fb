// A real server in a process of its own, and the bad network that leads to it.
#pragma once

#include <memory>
#include <string>

#include "base/day.h"
#include "platform/host/curl_http.h"
#include "platform/run_time_error.h"
#include "tests/support/real_server.h"
#include "tests/support/temp_folder.h"
#include "tests/support/virtual_loop.h"
#include "tests/sync/sync_server.h"

namespace marovane {

/// Serves as many accounts as the test wants, on the loopback.
class School {
 public:
  School() { Start(); }

  void AddAccount(const std::string& number) { pages_->AddAccount(number, SyncServer::kOldPassword); }
  /// Kills the process with whatever it is doing and starts another on the same data.
  void Crash() {
    process_.reset();
    Start();
  }
  void BackUp() { pages_->Query("vacuum into '" + (folder_ / "backup.db").string() + "'"); }
  /// The server comes back with the copy, which is there once.
  void Restore() {
    Stop();
    std::filesystem::rename(folder_ / "backup.db", Database());
    Start();
  }
  /// Another server takes its place, and knows these accounts and nothing of them.
  void StartAnew(const std::vector<std::string>& accounts) {
    Stop();
    std::filesystem::rename(Database(), folder_ / "old.db");
    pages_ = std::make_unique<SyncPages>(Database());
    for (const auto& account : accounts) AddAccount(account);
    Start();
  }
  const std::string& Root() const { return process_->Root(); }
  std::filesystem::path Database() const { return folder_ / "server.db"; }

 private:
  void Stop() {
    process_.reset();
    pages_.reset();
    for (const char* const ending : {"-wal", "-shm"}) std::filesystem::remove(Database().string() + ending);
  }
  void Start() {
    if (!pages_) pages_ = std::make_unique<SyncPages>(Database());
    process_ =
        std::make_unique<RealServer>(loop_, std::vector<std::string>{"--data", Database().parent_path()});
  }

  TempFolder folder_;
  std::unique_ptr<SyncPages> pages_;  ///< another way to its data, for what no page does
  VirtualLoop loop_;
  std::unique_ptr<RealServer> process_;
};

/// What happens to requests on their way.
enum class Weather {
  kFine,
  kNoConnection,
  kReplyLost,
  kServerError,
  kHalfReply,
  kForeignPage,
  kUnknownAccount,
  kRefusedPost,
  kServerCrash
};

/// One computer's way to the school: libcurl, and whatever the weather does to a request.
class Network {
 public:
  Network(School& school, EventLoop& loop) : school_(school), loop_(loop), curl_(loop) {}

  /// @param request to "http://server/…", wherever the school is now
  base::HttpResponse Send(const base::HttpRequest& request, Weather weather = Weather::kFine) {
    if (weather == Weather::kNoConnection) throw RunTimeError("no connection");
    if (weather == Weather::kServerError) return {500, "text/html", "<html>oops</html>", request.url};
    if (weather == Weather::kForeignPage) {
      return {200, "text/html", "<html>Welcome to our network! # Log in.</html>", request.url};
    }
    if (weather == Weather::kUnknownAccount) return {200, "text/html", "ERR_NOTFOUND", request.url};
    // Of a post with several rows: with one alone it would be for ever.
    const bool hasRows = request.body.find("&k2=") != std::string::npos;
    if (weather == Weather::kRefusedPost && hasRows) return {200, "text/html", "ERR_BAD_TEXT", request.url};
    base::HttpResponse response = Deliver(request);
    if (weather == Weather::kServerCrash) school_.Crash();
    if (weather == Weather::kHalfReply) response.body.resize(response.body.size() / 2);
    if (weather == Weather::kReplyLost || weather == Weather::kServerCrash) {
      throw RunTimeError("the reply got lost");
    }
    return response;
  }

 private:
  base::HttpResponse Deliver(base::HttpRequest request) {
    const std::string asked = request.url;
    const std::string name = "http://server/";
    request.url.replace(0, name.size(), school_.Root());
    const bool isProbe = request.url.ends_with("p_getconn.asp");
    base::HttpResponse response = curl_.Send(request);
    response.url = asked;
    // The school lives on the same day as the computers, whatever the real one is.
    if (isProbe) response.body = "ONLINE " + base::ShownDay(base::DayOf(loop_.Now()));
    return response;
  }

  School& school_;
  EventLoop& loop_;
  CurlHttp curl_;
};

}  // namespace marovane
