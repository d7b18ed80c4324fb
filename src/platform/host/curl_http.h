// Requests that leave the event loop alone.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>

#include "platform/event_loop.h"
#include "platform/http.h"

namespace marovane {

/// Sends requests from a thread of its own. At its end what is left has a time of grace, and then is dropped.
class BackgroundSender {
 public:
  explicit BackgroundSender(std::chrono::milliseconds grace = std::chrono::seconds{3}) : grace_(grace) {}
  ~BackgroundSender();
  BackgroundSender(const BackgroundSender&) = delete;
  BackgroundSender& operator=(const BackgroundSender&) = delete;
  void Add(const base::HttpRequest& request);

 private:
  void Work(const std::stop_token& stop);
  std::optional<base::HttpRequest> Next(const std::stop_token& stop);

  const std::chrono::milliseconds grace_;
  std::mutex mutex_;
  std::condition_variable_any changed_;
  std::deque<base::HttpRequest> waiting_;
  bool isSending_ = false;
  std::jthread worker_;  // started by the first request
};

/// Waits through EventLoop::RunBlocking, so that no handler runs in the middle of a request. For its limits
/// see base::HttpSession; beyond them Send throws RunTimeError, which names the address.
class CurlHttp : public HttpClient {
 public:
  explicit CurlHttp(EventLoop& loop) : loop_(loop) {}
  base::HttpResponse Send(const base::HttpRequest& request) override;
  void SendLater(const base::HttpRequest& request) override { later_.Add(request); }

 private:
  EventLoop& loop_;
  base::HttpSession session_;
  BackgroundSender later_;
};

}  // namespace marovane
