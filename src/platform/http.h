// Requests to servers.
#pragma once

#include "base/http.h"

namespace marovane {

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  /// Sends a request and waits for the whole reply, whatever its status. Throws RunTimeError when no reply
  /// came: no connection, a broken transfer, a malformed address.
  virtual base::HttpResponse Send(const base::HttpRequest& request) = 0;
};

}  // namespace marovane
