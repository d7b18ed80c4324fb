#include "tests/support/fake_http.h"

#include <stdexcept>
#include <utility>

#include "platform/run_time_error.h"

namespace marovane {

namespace {

std::string WithoutQuery(const std::string& url) { return url.substr(0, url.find('?')); }

FakeHttp::Answer Plain(const std::string& body, int status) {
  return [body, status](const base::HttpRequest& request) {
    return base::HttpResponse{status, "text/html; charset=big5", body, request.url};
  };
}

}  // namespace

void FakeHttp::Route(const std::string& end, const std::string& body, int status) {
  Route(end, Plain(body, status));
}

void FakeHttp::Queue(const std::string& end, const std::string& body, int status) {
  Queue(end, Plain(body, status));
}

void FakeHttp::RouteToNowhere(const std::string& end) {
  Route(end, [](const base::HttpRequest& request) -> base::HttpResponse {
    throw RunTimeError(request.url + ": no connection");
  });
}

FakeHttp::Answer FakeHttp::Find(const std::string& url) {
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

base::HttpResponse FakeHttp::Send(const base::HttpRequest& request) {
  requests.push_back(request);
  loop_.RunBlocking([this] { loop_.Advance(cost); });
  fault.Step("request to " + request.url);
  return Find(request.url)(request);
}

std::vector<std::string> FakeHttp::Bodies(const std::string& end) const {
  std::vector<std::string> bodies;
  for (const auto& request : requests) {
    if (WithoutQuery(request.url).ends_with(end)) bodies.push_back(request.body);
  }
  return bodies;
}

}  // namespace marovane
