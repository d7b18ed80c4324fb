// Requests that leave the event loop alone.
#pragma once

#include "platform/event_loop.h"
#include "platform/http.h"

namespace marovane {

/// Waits through EventLoop::RunBlocking, so that no handler runs in the middle of a request. For its limits
/// see base::HttpSession; beyond them Send throws RunTimeError, which names the address.
class CurlHttp : public HttpClient {
 public:
  explicit CurlHttp(EventLoop& loop) : loop_(loop) {}
  base::HttpResponse Send(const base::HttpRequest& request) override;

 private:
  EventLoop& loop_;
  base::HttpSession session_;
};

}  // namespace marovane
