#include "platform/host/curl_http.h"

#include <fmt/format.h>

#include <exception>

#include "platform/run_time_error.h"

base::HttpResponse CurlHttp::Send(const base::HttpRequest& request) {
  base::HttpResponse response;
  std::exception_ptr error;  // the work may be done on another thread
  loop_.RunBlocking([&] {
    try {
      response = session_.Send(request);
    } catch (const base::HttpError& failure) {
      error = std::make_exception_ptr(RunTimeError(fmt::format("{}: {}", request.url, failure.what())));
    } catch (...) {
      error = std::current_exception();
    }
  });
  if (error) std::rethrow_exception(error);
  return response;
}
