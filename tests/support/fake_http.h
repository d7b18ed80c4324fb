// A server that answers as the test wants.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
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
  void Route(const std::string& end, const std::string& body, int status = 200);
  /// No connection comes about.
  void RouteToNowhere(const std::string& end);
  /// Answers one request; several wait in line and come before a lasting answer.
  void Queue(const std::string& end, Answer answer) { routes_[end].once.push_back(std::move(answer)); }
  void Queue(const std::string& end, const std::string& body, int status = 200);

  base::HttpResponse Send(const base::HttpRequest& request) override;

  /// Bodies of the requests to an address, by its end.
  std::vector<std::string> Bodies(const std::string& end) const;

  std::vector<base::HttpRequest> requests;
  std::chrono::milliseconds cost{10};  ///< time of the virtual clock that each request takes
  Fault fault;

 private:
  struct Target {
    std::deque<Answer> once;
    Answer standing;
  };
  Answer Find(const std::string& url);

  VirtualLoop& loop_;
  std::map<std::string, Target> routes_;
};

}  // namespace marovane
