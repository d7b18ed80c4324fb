#include "platform/host/curl_http.h"

#include <curl/curl.h>
#include <fmt/format.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "platform/run_time_error.h"

namespace {

constexpr long kConnectSeconds = 20;
constexpr long kStillSeconds = 60;
constexpr long kMostRedirections = 10;
constexpr std::size_t kMostBytes = std::size_t{64} << 20;

using HeaderFields = std::vector<std::pair<std::string, std::string>>;

struct FreeList {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using List = std::unique_ptr<curl_slist, FreeList>;

void InitCurl() {
  static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (result != CURLE_OK) throw RunTimeError(curl_easy_strerror(result));
}

// The fields as they go out: of those with one name the last, in the place of the first.
HeaderFields Effective(const HeaderFields& headers) {
  HeaderFields fields;
  for (const auto& header : headers) {
    const auto same = std::ranges::find_if(fields, [&header](const auto& field) {
      return strcasecmp(field.first.c_str(), header.first.c_str()) == 0;
    });
    if (same == fields.end()) {
      fields.push_back(header);
    } else {
      *same = header;
    }
  }
  return fields;
}

void Append(List& list, const std::string& line) {
  curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
  if (longer == nullptr) throw RunTimeError("no memory for a request");
  static_cast<void>(list.release());
  list.reset(longer);
}

List HeaderList(const HeaderFields& headers) {
  List list;
  Append(list, "Expect:");  // some servers never answer a request that asks for leave first
  for (const auto& [name, value] : Effective(headers)) {
    if ((name + value).find_first_of("\r\n") != std::string::npos) {
      throw RunTimeError(fmt::format("line end in the request header {}", name));
    }
    Append(list, value.empty() ? name + ";" : fmt::format("{}: {}", name, value));
  }
  return list;
}

std::string WithoutProxy() {
  std::string hosts = "localhost,127.0.0.1,::1";
  for (const char* const name : {"no_proxy", "NO_PROXY"}) {
    if (const char* const value = std::getenv(name)) return fmt::format("{},{}", hosts, value);
  }
  return hosts;
}

std::size_t Receive(const char* bytes, std::size_t /*one*/, std::size_t count, void* to) {
  auto& body = *static_cast<std::string*>(to);
  if (body.size() + count > kMostBytes) return 0;
  body.append(bytes, count);
  return count;
}

}  // namespace

// One request on its way.
struct CurlHttp::Transfer {
  void Prepare(CURL* curl, const HttpRequest& request);
  void SetMethod(CURL* curl, const HttpRequest& request) const;
  void Perform(CURL* curl);
  void Fail(CURLcode result) const;

  std::string url;
  List headers;
  std::string withoutProxy = WithoutProxy();
  std::array<char, CURL_ERROR_SIZE> error{};
  HttpResponse response;
};

void CurlHttp::Transfer::Prepare(CURL* curl, const HttpRequest& request) {
  url = request.url;
  headers = HeaderList(request.headers);
  curl_easy_reset(curl);
  curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(curl, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl, CURLOPT_NOPROXY, withoutProxy.c_str());
  curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kStillSeconds);
  curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers.get());
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &Receive);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, &response.body);
  curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, error.data());
  SetMethod(curl, request);
}

void CurlHttp::Transfer::SetMethod(CURL* curl, const HttpRequest& request) const {
  if (request.method == "GET") {
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, kMostRedirections);
    return;
  }
  curl_easy_setopt(curl, CURLOPT_POST, 1L);
  curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
  curl_easy_setopt(curl, CURLOPT_POSTFIELDS, request.body.data());
  if (request.method != "POST") curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, request.method.c_str());
}

void CurlHttp::Transfer::Perform(CURL* curl) {
  const CURLcode result = curl_easy_perform(curl);
  if (result != CURLE_OK) Fail(result);
  long status = 0;
  const char* type = nullptr;
  const char* answered = nullptr;
  curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &status);
  curl_easy_getinfo(curl, CURLINFO_CONTENT_TYPE, &type);
  curl_easy_getinfo(curl, CURLINFO_EFFECTIVE_URL, &answered);
  response.status = static_cast<int>(status);
  response.contentType = type != nullptr ? type : "";
  response.url = answered != nullptr ? answered : url;
}

void CurlHttp::Transfer::Fail(CURLcode result) const {
  const char* const detail = error.front() != '\0' ? error.data() : curl_easy_strerror(result);
  const bool isTooLong = result == CURLE_WRITE_ERROR;
  throw RunTimeError(fmt::format("{}: {}", url, isTooLong ? "the reply is longer than 64 MB" : detail));
}

CurlHttp::CurlHttp(EventLoop& loop) : loop_(loop) {
  InitCurl();
  handle_ = curl_easy_init();
  if (handle_ == nullptr) throw RunTimeError("libcurl cannot start");
}

CurlHttp::~CurlHttp() { curl_easy_cleanup(handle_); }

HttpResponse CurlHttp::Send(const HttpRequest& request) {
  Transfer transfer;
  transfer.Prepare(handle_, request);
  std::exception_ptr error;  // the work may be done on another thread
  loop_.RunBlocking([&] {
    try {
      transfer.Perform(handle_);
    } catch (...) {
      error = std::current_exception();
    }
  });
  if (error) std::rethrow_exception(error);
  return std::move(transfer.response);
}
