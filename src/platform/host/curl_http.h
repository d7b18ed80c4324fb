// Requests through libcurl.
#pragma once

#include <memory>

#include "platform/event_loop.h"
#include "platform/http.h"

/// Speaks HTTP/1.1 over http and https, and keeps connections for later requests. Waits through
/// EventLoop::RunBlocking, so that no handler runs in the middle of a request.
///
/// Limits, beyond which Send throws RunTimeError: 20 seconds until a connection stands, 60 seconds in which
/// not one byte moves, 10 redirections, 64 MB of reply. Only GET follows redirections; the reply to a
/// redirected POST is returned as it came. Requests to this computer itself never go through a proxy.
class CurlHttp : public HttpClient {
 public:
  explicit CurlHttp(EventLoop& loop);
  ~CurlHttp() override;
  CurlHttp(const CurlHttp&) = delete;
  CurlHttp& operator=(const CurlHttp&) = delete;

  HttpResponse Send(const HttpRequest& request) override;

 private:
  struct Transfer;
  EventLoop& loop_;
  void* handle_;
};
