#include "base/http.h"

#include <gmock/gmock.h>
#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

#include "base/file_descriptor.h"

namespace base {
namespace {

using namespace std::string_literals;
using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

class LocalServer {
 public:
  LocalServer() : port_(server.bind_to_any_port("127.0.0.1")) {}
  ~LocalServer() {
    server.stop();
    if (thread_.joinable()) thread_.join();
  }
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;

  void Run() {
    thread_ = std::thread([this] { server.listen_after_bind(); });
    while (!server.is_running()) std::this_thread::yield();
  }
  std::string Url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }

  httplib::Server server;

 private:
  int port_;
  std::thread thread_;
};

// An address where nobody listens, and nobody else can begin to while this object lives.
class DeadEnd {
 public:
  DeadEnd() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const anyAddress = reinterpret_cast<sockaddr*>(&address);
    if (bind(socket_.Get(), anyAddress, size) != 0 || getsockname(socket_.Get(), anyAddress, &size) != 0) {
      throw std::runtime_error("no port");
    }
    port_ = ntohs(address.sin_port);
  }
  std::string Url() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }

 private:
  FileDescriptor socket_;
  int port_ = 0;
};

class HttpTest : public ::testing::Test {
 protected:
  HttpTest() {
    local_.server.Post("/echo", [this](const httplib::Request& request, httplib::Response& response) {
      seen_ = request;
      response.set_content(request.body, "text/html; charset=big5");
    });
    local_.server.Get("/echo", [this](const httplib::Request& request, httplib::Response& response) {
      seen_ = request;
      response.set_content("got", "text/plain");
    });
  }
  HttpResponse Get(const std::string& path) { return http_.Send({"GET", local_.Url(path), {}, ""}); }
  void Redirect(const std::string& path, const std::string& to) {
    const auto answer = [to](const httplib::Request&, httplib::Response& response) {
      response.set_redirect(to);
    };
    local_.server.Get(path, answer);
    local_.server.Post(path, answer);
  }

  LocalServer local_;
  HttpSession http_;
  httplib::Request seen_;
};

TEST_F(HttpTest, PostsBytesAsTheyAreWithTheLaterOfTwoHeaders) {
  local_.Run();
  std::string body = "key=a\0\xA4\x40"s;
  body.append(2 << 20, 'x');  // so long that curl would ask for leave first
  const auto response = http_.Send({"POST",
                                    local_.Url("/echo?tid=1"),
                                    {{"Content-Type", "application/x-www-form-urlencoded"},
                                     {"X-Other", "kept"},
                                     {"content-type", "text/xml; charset=big5"}},
                                    body});
  EXPECT_EQ(response.status, 200);
  EXPECT_EQ(response.contentType, "text/html; charset=big5");
  EXPECT_TRUE(response.body == body);
  EXPECT_EQ(seen_.get_header_value_count("Content-Type"), 1U);
  EXPECT_EQ(seen_.get_header_value("Content-Type"), "text/xml; charset=big5");
  EXPECT_EQ(seen_.get_header_value("X-Other"), "kept");
  EXPECT_FALSE(seen_.has_header("Expect"));
}

TEST_F(HttpTest, KeepsNothingOfOneRequestForTheNextButTheConnection) {
  local_.Run();
  http_.Send({"POST", local_.Url("/echo"), {{"X-First", "1"}}, "first"});
  const int port = seen_.remote_port;
  const auto response = Get("/echo");
  EXPECT_EQ(response.body, "got");
  EXPECT_EQ(seen_.method, "GET");
  EXPECT_FALSE(seen_.has_header("X-First"));
  EXPECT_EQ(seen_.remote_port, port);
}

TEST_F(HttpTest, FollowsRedirectionsForGetAlone) {
  Redirect("/moved", "/echo?from=moved");
  Redirect("/round", "/round");
  Redirect("/leave", "file:///etc/passwd");
  local_.Run();
  const auto got = Get("/moved");
  EXPECT_EQ(got.status, 200);
  EXPECT_EQ(got.url, local_.Url("/echo?from=moved"));
  seen_ = {};
  const auto posted = http_.Send({"POST", local_.Url("/moved"), {}, "key=a"});
  EXPECT_EQ(posted.status, 302);
  EXPECT_EQ(posted.url, local_.Url("/moved"));
  EXPECT_EQ(seen_.method, "");
  EXPECT_THROW(Get("/round"), HttpError);
  EXPECT_THROW(Get("/leave"), HttpError);
}

TEST_F(HttpTest, ReturnsAReplyWhateverItsStatus) {
  local_.server.Get("/broken", [](const httplib::Request&, httplib::Response& response) {
    response.status = 500;
    response.set_content("ERR_SERVER", "text/plain");
  });
  local_.Run();
  const auto broken = Get("/broken");
  EXPECT_EQ(broken.status, 500);
  EXPECT_EQ(broken.body, "ERR_SERVER");
  EXPECT_EQ(Get("/nowhere").status, 404);
}

TEST_F(HttpTest, GivesUpAReplyThatBreaksOffOrNeverEnds) {
  local_.server.Get("/cut", [](const httplib::Request&, httplib::Response& response) {
    response.set_content_provider(1000, "text/html",
                                  [](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                    return offset == 0 && sink.write("half", 4);
                                  });
  });
  std::size_t sent = 0;
  local_.server.Get("/endless", [&sent](const httplib::Request&, httplib::Response& response) {
    response.set_chunked_content_provider("text/html", [&sent](std::size_t, httplib::DataSink& sink) {
      static const std::string block(1 << 20, 'x');
      sent += block.size();
      return sink.write(block.data(), block.size());
    });
  });
  local_.Run();
  EXPECT_THROW(Get("/cut"), HttpError);
  EXPECT_THAT([this] { Get("/endless"); }, ThrowsMessage<HttpError>(HasSubstr("longer than 64 MB")));
  EXPECT_EQ(Get("/echo").body, "got");  // and is fit for the next one
}

TEST_F(HttpTest, TellsReadablyWhyNothingCame) {
  const auto send = [this](const std::string& url) {
    return [this, url] { http_.Send({"GET", url, {}, ""}); };
  };
  const DeadEnd deadEnd;
  EXPECT_THAT(send(deadEnd.Url()), ThrowsMessage<HttpError>(HasSubstr("onnect")));
  for (const char* const url : {"", "http://", "file:///etc/passwd", "ftp://127.0.0.1/", "http://a b/"}) {
    EXPECT_THROW(send(url)(), HttpError) << url;
  }
  local_.Run();
  const HttpRequest smuggled{"GET", local_.Url("/echo"), {{"X-A", "1\r\nX-B: 2"}}, ""};
  EXPECT_THROW(http_.Send(smuggled), HttpError);
}

TEST_F(HttpTest, HandsBytesOnAndPassesOnWhatTheirTakerThrows) {
  local_.Run();
  std::string taken;
  const HttpSession::Sink take = [&taken](std::string_view bytes) { taken += bytes; };
  const HttpRequest request{.method = "GET", .url = local_.Url("/echo")};
  EXPECT_EQ(http_.Fetch(request, take).status, 200);
  EXPECT_EQ(taken, "got");
  const HttpSession::Sink refuse = [](std::string_view) { throw std::logic_error("no room"); };
  EXPECT_THROW(http_.Fetch(request, refuse), std::logic_error);
}

TEST_F(HttpTest, RefusesWhatItsLimitsForbid) {
  Redirect("/moved", "/again");
  Redirect("/again", "/echo");
  local_.Run();
  const auto get = [this](const HttpLimits& limits, const std::string& path) {
    return [this, limits, path] { HttpSession(limits).Send({.method = "GET", .url = local_.Url(path)}); };
  };
  EXPECT_NO_THROW(get({.redirections = 2, .refusesErrors = true}, "/moved")());
  EXPECT_THROW(get({.redirections = 1}, "/moved")(), HttpError);
  EXPECT_THROW(get({.isSecure = true}, "/echo")(), HttpError);
  EXPECT_THAT(get({.refusesErrors = true}, "/nowhere"), ThrowsMessage<HttpError>(HasSubstr("404")));
}

TEST_F(HttpTest, AsksNoProxyForThisComputer) {
  local_.Run();
  setenv("http_proxy", "http://127.0.0.1:1", 1);
  const auto body = Get("/echo").body;
  unsetenv("http_proxy");
  EXPECT_EQ(body, "got");
}

}  // namespace
}  // namespace base
