// A server that answers as the test wants.
#pragma once

#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/http.h"
#include "tests/support/fault.h"
#include "tests/support/virtual_loop.h"

namespace marovane {

/// Records each request and answers it by the end of its address, up to a "?". Of several ends that fit, the
/// longest counts. A request that no route fits throws std::logic_error. Each request is a step of the fault.
class FakeHttp : public HttpClient {
 public:
  using Answer = std::function<base::HttpResponse(const base::HttpRequest&)>;

  explicit FakeHttp(VirtualLoop& loop) : loop_(loop) {}

  /// Answers every request of the address from now on.
  void Route(const std::string& end, Answer answer) { routes_[end].standing = std::move(answer); }
  void Route(const std::string& end, const std::string& body, int status = 200) {
    Route(end, Plain(body, status));
  }
  /// No connection comes about.
  void RouteToNowhere(const std::string& end) {
    Route(end, [](const base::HttpRequest& request) -> base::HttpResponse {
      throw RunTimeError(request.url + ": no connection");
    });
  }
  /// Requests to these addresses go out through another client, which must outlive this one's use.
  void RouteThrough(HttpClient& client, std::initializer_list<const char*> ends) {
    for (const char* const end : ends) {
      Route(end, [&client](const base::HttpRequest& request) { return client.Send(request); });
    }
  }
  /// Answers one request; several wait in line and come before a lasting answer.
  void Queue(const std::string& end, Answer answer) { routes_[end].once.push_back(std::move(answer)); }
  void Queue(const std::string& end, const std::string& body, int status = 200) {
    Queue(end, Plain(body, status));
  }

  base::HttpResponse Send(const base::HttpRequest& request) override {
    requests.push_back(request);
    const bool isTooSlow = request.limit.count() > 0 && cost > request.limit;
    loop_.RunBlocking([&] {
      loop_.Advance(isTooSlow ? request.limit : cost);
      if (breaksOff && breaksOff(request)) loop_.BreakOff();
      if (loop_.StopToken().stop_requested()) throw BrokenOff(request.url + ": broken off");
    });
    fault.Step("request to " + request.url);
    if (isTooSlow) throw RunTimeError(request.url + ": no reply in time");
    return Find(request.url)(request);
  }

  /// Takes none of the learner's time.
  void SendLater(const base::HttpRequest& request) override {
    requests.push_back(request);
    try {
      Find(request.url)(request);
    } catch (const RunTimeError&) {
      return;
    }
  }

  /// Bodies of the requests to an address, by its end.
  std::vector<std::string> Bodies(const std::string& end) const {
    std::vector<std::string> bodies;
    for (const auto& request : requests) {
      if (WithoutQuery(request.url).ends_with(end)) bodies.push_back(request.body);
    }
    return bodies;
  }

  std::vector<base::HttpRequest> requests;
  std::chrono::milliseconds cost{10};  ///< time of the virtual clock that each request takes
  std::function<bool(const base::HttpRequest&)> breaksOff;  ///< whether the learner does so during a request
  Fault fault;

 private:
  struct Target {
    std::deque<Answer> once;
    Answer standing;
  };

  static std::string WithoutQuery(const std::string& url) { return url.substr(0, url.find('?')); }
  static Answer Plain(const std::string& body, int status) {
    return [body, status](const base::HttpRequest& request) {
      return base::HttpResponse{status, "text/html; charset=big5", body, request.url};
    };
  }
  Answer Find(const std::string& url) {
    const std::string address = WithoutQuery(url);
    Target* best = nullptr;
    std::size_t length = 0;
    for (auto& [end, target] : routes_) {
      const bool canAnswer = !target.once.empty() || target.standing;
      if (!canAnswer || !address.ends_with(end) || (best != nullptr && end.size() < length)) continue;
      best = &target;
      length = end.size();
    }
    if (best == nullptr) throw std::logic_error("the test has no answer for " + url);
    if (best->once.empty()) return best->standing;
    Answer answer = std::move(best->once.front());
    best->once.pop_front();
    return answer;
  }

  VirtualLoop& loop_;
  std::map<std::string, Target> routes_;
};

}  // namespace marovane
