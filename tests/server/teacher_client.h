// A browser of a teacher, as far as cookies and forms go.
#pragma once

#include <map>
#include <string>

#include "tests/server/running_server.h"

struct WebPage {
  int status = 0;
  std::string body;
  std::string location;  ///< of a redirection, below the server's root
  httplib::Headers headers;
};

class TeacherClient {
 public:
  explicit TeacherClient(const RunningServer& server) : server_(server) {}

  using Fields = std::map<std::string, std::string>;

  /// `path` is below "teacher/".
  WebPage Get(const std::string& path);
  /// Posts with the token of the last page that had one, unless the fields have a `token`.
  WebPage Post(const std::string& path, Fields fields);
  /// The same as a form with a file.
  WebPage PostFile(const std::string& path, Fields fields, const std::string& file);
  /// Posts a body as it is.
  WebPage Send(const std::string& path, const std::string& body, const std::string& contentType);
  /// Opens the login page and logs in.
  WebPage LogIn(const std::string& login, const std::string& password);

  std::map<std::string, std::string> cookies;
  std::string token;
  httplib::Headers extraHeaders;

 private:
  httplib::Headers Headers() const;
  WebPage Keep(const httplib::Result& answer);

  const RunningServer& server_;
};
