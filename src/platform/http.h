// Requests to servers.
#pragma once

#include <string>
#include <utility>
#include <vector>

struct HttpRequest {
  std::string method = "POST";
  std::string url;
  /// In the order in which they are set; a later one replaces an earlier one of the same name.
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;  ///< bytes as they go out
};

struct HttpResponse {
  int status = 0;
  std::string contentType;  ///< value of the header, empty when absent
  std::string body;         ///< bytes as they came
  std::string url;          ///< address that answered, after redirections
};

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  /// Sends a request and waits for the whole reply, whatever its status. Throws RunTimeError when no reply
  /// came: no connection, a broken transfer, a malformed address.
  virtual HttpResponse Send(const HttpRequest& request) = 0;
};
