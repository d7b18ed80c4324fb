// A real server in a process of its own, and the bad network that leads to it.
#pragma once

#include <memory>
#include <string>

#include "platform/host/curl_http.h"
#include "tests/server/temp_folder.h"
#include "tests/support/real_server.h"
#include "tests/support/virtual_loop.h"
#include "tests/sync/sync_server.h"

namespace marovane {

/// Serves as many accounts as the test wants, on the loopback.
class School {
 public:
  School();

  void AddAccount(const std::string& number);
  /// Kills the process with whatever it is doing and starts another on the same data.
  void Crash();
  const std::string& Root() const { return process_->Root(); }
  std::filesystem::path Database() const { return folder_ / "server.db"; }

 private:
  void Start();

  TempFolder folder_;
  SyncPages door_{Database()};  ///< another way to its data, for what no page does
  VirtualLoop loop_;
  std::unique_ptr<RealServer> process_;
};

/// What happens to requests on their way.
enum class Weather { kFine, kNoConnection, kReplyLost, kServerError, kHalfReply, kForeignPage, kServerCrash };

/// One computer's way to the school: libcurl, and whatever the weather does to a request.
class Network : public HttpClient {
 public:
  Network(School& school, EventLoop& loop) : school_(school), loop_(loop), curl_(loop) {}

  /// @param request to "http://server/…", wherever that stands now
  base::HttpResponse Send(const base::HttpRequest& request) override { return Send(request, Weather::kFine); }
  base::HttpResponse Send(const base::HttpRequest& request, Weather weather);

 private:
  base::HttpResponse Deliver(base::HttpRequest request);

  School& school_;
  EventLoop& loop_;
  CurlHttp curl_;
};

}  // namespace marovane
