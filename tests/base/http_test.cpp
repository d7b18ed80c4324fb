#include "base/http.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <future>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <thread>

#include "tests/support/local_server.h"

namespace base {
namespace {

using namespace std::string_literals;
using namespace ::testing;

constexpr const char* kNobodyListens = "http://127.0.0.1:1";

class HttpTest : public ::testing::Test {
 protected:
  HttpTest() {
    const auto echo = [this](const httplib::Request& request, httplib::Response& response) {
      seen_ = request;
      response.set_content(request.method == "GET" ? "got" : request.body, "text/html; charset=big5");
    };
    local_.pages->Post("/echo", echo);
    local_.pages->Get("/echo", echo);
  }
  std::string Url(const std::string& path) const { return "http://" + local_.Host() + path; }
  HttpResponse Get(const std::string& path) { return http_.Send({"GET", Url(path), {}, ""}); }
  void Redirect(const std::string& path, const std::string& to) {
    const auto answer = [to](const httplib::Request&, httplib::Response& response) {
      response.set_redirect(to);
    };
    local_.pages->Get(path, answer);
    local_.pages->Post(path, answer);
  }

  httplib::Request seen_;
  marovane::LocalServer local_;
  HttpSession http_;
};

TEST_F(HttpTest, PostsBytesAsTheyAreWithTheLaterOfTwoHeaders) {
  std::string body = "key=a\0\xA4\x40"s;
  body.append(2 << 20, 'x');  // so long that curl would ask for leave first
  const auto response = http_.Send({"POST",
                                    Url("/echo?tid=1"),
                                    {{"Content-Type", "application/x-www-form-urlencoded"},
                                     {"X-Other", "kept"},
                                     {"content-type", "text/xml; charset=big5"}},
                                    body});
  EXPECT_EQ(response.status, 200);
  EXPECT_EQ(response.contentType, "text/html; charset=big5");
  EXPECT_EQ(response.Header("content-TYPE"), response.contentType);
  EXPECT_EQ(response.Header("X-Other"), "") << "which the request had";
  EXPECT_TRUE(response.body == body);
  EXPECT_EQ(seen_.get_header_value_count("Content-Type"), 1U);
  EXPECT_EQ(seen_.get_header_value("Content-Type"), "text/xml; charset=big5");
  EXPECT_EQ(seen_.get_header_value("X-Other"), "kept");
  EXPECT_FALSE(seen_.has_header("Expect"));
}

TEST_F(HttpTest, KeepsNothingOfOneRequestForTheNextButTheConnection) {
  http_.Send({"POST", Url("/echo"), {{"X-First", "1"}}, "first"});
  const int port = seen_.remote_port;
  EXPECT_EQ(Get("/echo").body, "got");
  EXPECT_FALSE(seen_.has_header("X-First"));
  EXPECT_EQ(seen_.remote_port, port);
}

TEST_F(HttpTest, FollowsRedirectionsForGetAlone) {
  Redirect("/moved", "/echo?from=moved");
  Redirect("/round", "/round");
  Redirect("/leave", "file:///etc/passwd");
  const auto got = Get("/moved");
  EXPECT_EQ(got.status, 200);
  EXPECT_EQ(got.url, Url("/echo?from=moved"));
  EXPECT_EQ(got.Header("Location"), "") << "of the redirection";
  seen_ = {};
  const auto stayed = http_.Send({.method = "GET", .url = Url("/moved"), .followsRedirections = false});
  EXPECT_EQ(stayed.status, 302);
  EXPECT_EQ(stayed.Header("Location"), "/echo?from=moved");
  const auto posted = http_.Send({"POST", Url("/moved"), {}, "key=a"});
  EXPECT_EQ(posted.status, 302);
  EXPECT_EQ(posted.url, Url("/moved"));
  EXPECT_EQ(seen_.method, "");
  EXPECT_EQ(Get("/nowhere").status, 404) << "a reply, whatever its status";
  EXPECT_THROW(Get("/round"), HttpError);
  EXPECT_THROW(Get("/leave"), HttpError);
}

TEST_F(HttpTest, GivesUpAReplyThatBreaksOffOrNeverEnds) {
  local_.pages->Get("/cut", [](const httplib::Request&, httplib::Response& response) {
    response.set_content_provider(1000, "text/html",
                                  [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                    return offset == 0 && sink.write("half", 4);
                                  });
  });
  local_.pages->Get("/endless", [](const httplib::Request&, httplib::Response& response) {
    response.set_chunked_content_provider("text/html", [](std::size_t, httplib::DataSink& sink) {
      static const std::string block(1 << 20, 'x');
      return sink.write(block.data(), block.size());
    });
  });
  EXPECT_THROW(Get("/cut"), HttpError);
  EXPECT_THAT([this] { Get("/endless"); }, ThrowsMessage<HttpError>(HasSubstr("longer than 64 MB")));
  EXPECT_EQ(Get("/echo").body, "got");  // and is fit for the next one
}

TEST_F(HttpTest, SaysReadablyWhyNothingCame) {
  const auto send = [this](const std::string& url) {
    return [this, url] { http_.Send({"GET", url, {}, ""}); };
  };
  EXPECT_THAT(send(kNobodyListens), ThrowsMessage<HttpError>(HasSubstr("onnect")));
  for (const char* const url : {"", "http://", "file:///etc/passwd", "ftp://127.0.0.1/", "http://a b/"}) {
    EXPECT_THROW(send(url)(), HttpError) << url;
  }
  const HttpRequest smuggled{"GET", Url("/echo"), {{"X-A", "1\r\nX-B: 2"}}, ""};
  EXPECT_THROW(http_.Send(smuggled), HttpError);
}

TEST_F(HttpTest, HandsBytesOnAndPassesOnWhatTheirTakerThrows) {
  std::string taken;
  const HttpSession::Sink take = [&taken](std::string_view bytes) { taken += bytes; };
  const HttpRequest request{.method = "GET", .url = Url("/echo")};
  EXPECT_EQ(http_.Fetch(request, take).status, 200);
  EXPECT_EQ(taken, "got");
  const HttpSession::Sink refuse = [](std::string_view) { throw std::logic_error("no room"); };
  EXPECT_THROW(http_.Fetch(request, refuse), std::logic_error);
}

TEST_F(HttpTest, RefusesWhatItsLimitsForbid) {
  Redirect("/moved", "/again");
  Redirect("/again", "/echo");
  const auto get = [this](const HttpLimits& limits, const std::string& path) {
    return [this, limits, path] { HttpSession(limits).Send({.method = "GET", .url = Url(path)}); };
  };
  EXPECT_NO_THROW(get({.redirections = 2, .refusesErrors = true}, "/moved")());
  EXPECT_THROW(get({.redirections = 1}, "/moved")(), HttpError);
  EXPECT_THROW(get({.isSecure = true}, "/echo")(), HttpError);
  EXPECT_THAT(get({.refusesErrors = true}, "/nowhere"), ThrowsMessage<HttpError>(HasSubstr("404")));
}

TEST_F(HttpTest, EndsAtOnceWhenItIsBrokenOff) {
  // The handler may go on when the test has ended.
  const auto asked = std::make_shared<std::promise<void>>();
  std::promise<void> mayAnswer;
  local_.pages->Get(
      "/slow", [asked, until = mayAnswer.get_future().share()](const httplib::Request&, httplib::Response&) {
        asked->set_value();
        until.wait();
      });
  std::stop_source stop;
  std::jthread learner([&] {
    asked->get_future().wait();
    stop.request_stop();
  });
  const HttpRequest slow{.method = "GET", .url = Url("/slow")};
  EXPECT_THROW(http_.Send(slow, stop.get_token()), HttpStopped);
  mayAnswer.set_value();
  EXPECT_THROW(http_.Send(slow, stop.get_token()), HttpStopped) << "before it begins";
  EXPECT_EQ(Get("/echo").body, "got") << "the session is fit for the next one";
}

TEST_F(HttpTest, AsksNoProxyForThisComputer) {
  setenv("http_proxy", kNobodyListens, 1);
  EXPECT_EQ(Get("/echo").body, "got");
  unsetenv("http_proxy");
}

}  // namespace
}  // namespace base
