#include "base/http.h"

#include <curl/curl.h>
#include <fmt/format.h>
#include <strings.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <exception>
#include <memory>

#include "base/text.h"

namespace base {
namespace {

constexpr long kConnectSeconds = 5;
constexpr std::size_t kMostBytes = std::size_t{64} << 20;

struct FreeList {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using List = std::unique_ptr<curl_slist, FreeList>;

void InitCurl() {
  static const CURLcode result = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (result != CURLE_OK) throw HttpError(curl_easy_strerror(result));
}

auto FindHeader(auto& headers, const std::string& name) {
  return std::ranges::find_if(
      headers, [&name](const auto& header) { return strcasecmp(header.first.c_str(), name.c_str()) == 0; });
}

// The fields as they go out: of those with one name the last, in the place of the first.
HttpHeaders Effective(const HttpHeaders& headers) {
  HttpHeaders fields;
  for (const auto& header : headers) {
    const auto same = FindHeader(fields, header.first);
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
  if (longer == nullptr) throw HttpError("no memory for a request");
  static_cast<void>(list.release());
  list.reset(longer);
}

List HeaderList(const HttpHeaders& headers) {
  List list;
  Append(list, "Expect:");  // some servers never answer a request that asks for leave first
  for (const auto& [name, value] : Effective(headers)) {
    if ((name + value).find_first_of("\r\n") != std::string::npos) {
      throw HttpError(fmt::format("line end in the request header {}", name));
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

}  // namespace

// One request on its way.
class HttpSession::Transfer {
 public:
  Transfer(CURLM* multi, CURL* curl, const HttpLimits& limits, const HttpRequest& request, const Sink& sink)
      : multi_(multi), curl_(curl), headers_(HeaderList(request.headers)), sink_(sink) {
    Prepare(request);
    Bound(limits);
    SetMethod(request, limits);
  }
  ~Transfer() { curl_easy_reset(curl_); }  // it points into this object
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  HttpResponse Perform(const std::stop_token& stop) {
    const CURLcode result = Run(stop);
    if (sinkError_) std::rethrow_exception(sinkError_);
    if (result != CURLE_OK)
      throw HttpError(detail_.front() != '\0' ? detail_.data() : curl_easy_strerror(result));
    long status = 0;
    const char* type = nullptr;
    const char* answered = nullptr;
    curl_easy_getinfo(curl_, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(curl_, CURLINFO_CONTENT_TYPE, &type);
    curl_easy_getinfo(curl_, CURLINFO_EFFECTIVE_URL, &answered);
    return {static_cast<int>(status), type != nullptr ? type : "", "", answered != nullptr ? answered : "",
            std::move(answerHeaders_)};
  }

 private:
  // Like curl_easy_perform, but wakes up when the stop is requested.
  CURLcode Run(const std::stop_token& stop) {
    constexpr int kLookAgain = 1000;  // milliseconds; curl has its own clock for whatever is due earlier
    Expect(curl_multi_add_handle(multi_, curl_));
    const std::unique_ptr<CURL, std::function<void(CURL*)>> added(
        curl_, [this](CURL* curl) { curl_multi_remove_handle(multi_, curl); });
    const std::stop_callback wake(stop, [this] { curl_multi_wakeup(multi_); });
    int running = 1;
    while (true) {
      if (stop.stop_requested()) throw HttpStopped("broken off");
      Expect(curl_multi_perform(multi_, &running));
      if (running == 0) break;
      Expect(curl_multi_poll(multi_, nullptr, 0, kLookAgain, nullptr));
    }
    int rest = 0;
    const CURLMsg* const message = curl_multi_info_read(multi_, &rest);
    return message != nullptr ? message->data.result : CURLE_FAILED_INIT;
  }

  static void Expect(CURLMcode code) {
    if (code != CURLM_OK) throw HttpError(curl_multi_strerror(code));
  }

  void Prepare(const HttpRequest& request) {
    curl_easy_setopt(curl_, CURLOPT_URL, request.url.c_str());
    curl_easy_setopt(curl_, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(curl_, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl_, CURLOPT_QUICK_EXIT, 1L);  // a name that is being looked up holds up nobody
    curl_easy_setopt(curl_, CURLOPT_TIMEOUT_MS, static_cast<long>(request.limit.count()));
    curl_easy_setopt(curl_, CURLOPT_NOPROXY, withoutProxy_.c_str());
    curl_easy_setopt(curl_, CURLOPT_HTTPHEADER, headers_.get());
    curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, &Receive);
    curl_easy_setopt(curl_, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(curl_, CURLOPT_HEADERFUNCTION, &ReceiveHeader);
    curl_easy_setopt(curl_, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(curl_, CURLOPT_ERRORBUFFER, detail_.data());
  }

  void Bound(const HttpLimits& limits) {
    const char* const protocols = limits.isSecure ? "https" : "http,https";
    curl_easy_setopt(curl_, CURLOPT_PROTOCOLS_STR, protocols);
    curl_easy_setopt(curl_, CURLOPT_REDIR_PROTOCOLS_STR, protocols);
    curl_easy_setopt(curl_, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    curl_easy_setopt(curl_, CURLOPT_LOW_SPEED_LIMIT, limits.leastBytesPerSecond);
    curl_easy_setopt(curl_, CURLOPT_LOW_SPEED_TIME, limits.slowSeconds);
    curl_easy_setopt(curl_, CURLOPT_FAILONERROR, limits.refusesErrors ? 1L : 0L);
  }

  void SetMethod(const HttpRequest& request, const HttpLimits& limits) {
    if (request.method == "GET") {
      curl_easy_setopt(curl_, CURLOPT_FOLLOWLOCATION, request.followsRedirections ? 1L : 0L);
      curl_easy_setopt(curl_, CURLOPT_MAXREDIRS, limits.redirections);
      return;
    }
    curl_easy_setopt(curl_, CURLOPT_POST, 1L);
    curl_easy_setopt(curl_, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
    curl_easy_setopt(curl_, CURLOPT_POSTFIELDS, request.body.data());
    if (request.method != "POST") curl_easy_setopt(curl_, CURLOPT_CUSTOMREQUEST, request.method.c_str());
  }

  static std::size_t Receive(const char* bytes, std::size_t /*one*/, std::size_t count, void* transfer) {
    auto& self = *static_cast<Transfer*>(transfer);
    try {
      self.sink_({bytes, count});
      return count;
    } catch (...) {
      self.sinkError_ = std::current_exception();
      return 0;
    }
  }

  // A line, as it comes; those of a redirection come before those of the answer.
  static std::size_t ReceiveHeader(const char* bytes, std::size_t /*one*/, std::size_t count,
                                   void* transfer) {
    HttpHeaders& headers = static_cast<Transfer*>(transfer)->answerHeaders_;
    const std::string_view line(bytes, count);
    const auto colon = line.find(':');
    if (line.starts_with("HTTP/")) {
      headers.clear();
    } else if (colon != std::string_view::npos) {
      headers.emplace_back(line.substr(0, colon), Trimmed(line.substr(colon + 1), kWhiteSpace));
    }
    return count;
  }

  CURLM* multi_;
  CURL* curl_;
  List headers_;
  HttpHeaders answerHeaders_;
  const Sink& sink_;
  std::string withoutProxy_ = WithoutProxy();
  std::array<char, CURL_ERROR_SIZE> detail_{};
  std::exception_ptr sinkError_;  // waits until curl has returned
};

std::string HttpResponse::Header(std::string_view name) const {
  const auto found = FindHeader(headers, std::string(name));
  return found == headers.end() ? "" : found->second;
}

HttpSession::HttpSession(const HttpLimits& limits) : limits_(limits) {
  InitCurl();
  multi_.reset(curl_multi_init());
  curl_.reset(curl_easy_init());
  if (!multi_ || !curl_) throw HttpError("libcurl cannot start");
}

HttpSession::~HttpSession() = default;

void HttpSession::CleanUp::operator()(void* easy) const { curl_easy_cleanup(easy); }
void HttpSession::CleanUpMulti::operator()(void* multi) const { curl_multi_cleanup(multi); }

HttpResponse HttpSession::Fetch(const HttpRequest& request, const Sink& sink, const std::stop_token& stop) {
  return Transfer(multi_.get(), curl_.get(), limits_, request, sink).Perform(stop);
}

HttpResponse HttpSession::Send(const HttpRequest& request, const std::stop_token& stop) {
  std::string body;
  HttpResponse response = Fetch(
      request,
      [&](std::string_view bytes) {
        if (body.size() + bytes.size() > kMostBytes) throw HttpError("the reply is longer than 64 MB");
        body += bytes;
      },
      stop);
  response.body = std::move(body);
  return response;
}

}  // namespace base
