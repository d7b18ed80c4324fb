// Requests over HTTP.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/error.h"

namespace base {

/// No reply came. The text says why, but not from which address.
class HttpError : public Error {
 public:
  using Error::Error;
};

/// The caller has broken it off.
class HttpStopped : public HttpError {
 public:
  using HttpError::HttpError;
};

using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

struct HttpRequest {
  std::string method = "POST";
  std::string url;
  /// In the order in which they are set; a later one replaces an earlier one of the same name.
  HttpHeaders headers = {};
  std::string body = {};               ///< bytes as they go out
  std::chrono::milliseconds limit{0};  ///< for the whole exchange; zero for none
  bool followsRedirections = true;     ///< false for what must reach no other address; a POST follows none
};

struct HttpResponse {
  int status = 0;
  std::string contentType;  ///< value of the header, empty when absent
  std::string body;         ///< bytes as they came
  std::string url;          ///< address that answered, after redirections
  HttpHeaders headers = {};

  /// The value of a header, "" when it is absent.
  std::string Header(std::string_view name) const;
};

struct HttpLimits {
  /// A transfer that moves fewer bytes a second than these for so long is given up.
  long leastBytesPerSecond = 1, slowSeconds = 60;
  long redirections = 10;      ///< for GET; the reply to a redirected POST is returned as it came
  bool isSecure = false;       ///< no request and no redirection but over HTTPS
  bool refusesErrors = false;  ///< a status of 400 or above is an HttpError, and its body is not looked at
};

/// Speaks HTTP/1.1 over http and https through libcurl, and keeps connections for later requests. Requests to
/// this computer itself never go through a proxy. A session serves one thread at a time.
class HttpSession {
 public:
  using Sink = std::function<void(std::string_view bytes)>;

  explicit HttpSession(const HttpLimits& limits = {});
  ~HttpSession();
  HttpSession(const HttpSession&) = delete;
  HttpSession& operator=(const HttpSession&) = delete;

  /// Sends a request and waits for the whole reply, whatever its status. Throws HttpError when none came: no
  /// connection within 5 seconds, a broken transfer, a malformed address or header, a limit that was passed,
  /// more than 64 MB; HttpStopped, at once, when another thread requests the stop.
  HttpResponse Send(const HttpRequest& request, const std::stop_token& stop = {});
  /// The same for a reply of any length, whose body goes to the sink as it comes. What the sink throws comes
  /// through.
  HttpResponse Fetch(const HttpRequest& request, const Sink& sink, const std::stop_token& stop = {});

 private:
  class Transfer;
  struct CleanUp {
    void operator()(void* easy) const;
  };
  struct CleanUpMulti {
    void operator()(void* multi) const;
  };
  const HttpLimits limits_;
  std::unique_ptr<void, CleanUpMulti> multi_;  // goes after the handle that works in it
  std::unique_ptr<void, CleanUp> curl_;
};

}  // namespace base
