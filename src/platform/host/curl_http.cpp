#include "platform/host/curl_http.h"

#include <fmt/format.h>

#include "platform/run_time_error.h"

namespace marovane {

base::HttpResponse CurlHttp::Send(const base::HttpRequest& request) try {
  base::HttpResponse response;
  loop_.RunBlocking([&] { response = session_.Send(request); });
  return response;
} catch (const base::HttpError& failure) {
  throw RunTimeError(fmt::format("{}: {}", request.url, failure.what()));
}

}  // namespace marovane
