#include "platform/host/curl_http.h"

#include <fmt/format.h>

#include <chrono>
#include <utility>

#include "platform/run_time_error.h"

namespace marovane {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestTransfer = 30s;  // one that stands still keeps back the rest

}  // namespace

BackgroundSender::~BackgroundSender() {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, grace_, [this] { return waiting_.empty() && !isSending_; });
}

void BackgroundSender::Add(const base::HttpRequest& request) {
  const std::lock_guard lock(mutex_);
  waiting_.push_back(request);
  if (!worker_.joinable()) worker_ = std::jthread([this](const std::stop_token& stop) { Work(stop); });
  changed_.notify_all();
}

void BackgroundSender::Work(const std::stop_token& stop) {
  std::optional<base::HttpSession> session;
  while (auto request = Next(stop)) {
    if (request->limit == 0ms) request->limit = kLongestTransfer;
    try {
      if (!session) session.emplace();
      session->Send(*request, stop);
    } catch (const base::HttpError&) {
      continue;  // nobody asked for the reply
    }
  }
}

// Nothing when the end has come.
std::optional<base::HttpRequest> BackgroundSender::Next(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  isSending_ = false;
  changed_.notify_all();
  if (!changed_.wait(lock, stop, [this] { return !waiting_.empty(); })) return std::nullopt;
  isSending_ = true;
  base::HttpRequest request = std::move(waiting_.front());
  waiting_.pop_front();
  return request;
}

base::HttpResponse CurlHttp::Send(const base::HttpRequest& request) try {
  base::HttpResponse response;
  loop_.RunBlocking([&] { response = session_.Send(request, loop_.StopToken()); });
  return response;
} catch (const base::HttpStopped&) {
  throw BrokenOff(fmt::format("{}: broken off", request.url));
} catch (const base::HttpError& failure) {
  throw RunTimeError(fmt::format("{}: {}", request.url, failure.what()));
}

}  // namespace marovane
