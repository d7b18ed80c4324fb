// Requests to servers.
#pragma once

#include "base/http.h"

namespace marovane {

class HttpClient {
 public:
  virtual ~HttpClient() = default;
  /// Sends a request and waits for the whole reply, whatever its status. Throws RunTimeError when no reply
  /// came: no connection, a broken transfer, a malformed address; BrokenOff when the learner did not want to
  /// wait.
  virtual base::HttpResponse Send(const base::HttpRequest& request) = 0;
  /// Sends a request whose reply matters to nobody, and returns at once. Such requests go out one after the
  /// other, in their order; one that fails is gone.
  virtual void SendLater(const base::HttpRequest& request) = 0;
};

}  // namespace marovane
