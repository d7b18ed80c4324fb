#include "updater/source.h"

#include <curl/curl.h>
#include <fmt/format.h>

#include <array>
#include <exception>
#include <fstream>
#include <vector>

#include "updater/refusal.h"

namespace {

constexpr const char* kTooLong = "更新檔比清單所說的還大，沒有更新任何檔案。";

// Passes bytes on until there are more than were promised.
class Bounded {
 public:
  Bounded(std::uint64_t most, const Sink& sink) : rest_(most), sink_(sink) {}
  void Take(std::string_view bytes) {
    if (bytes.size() > rest_) throw Refusal(kTooLong);
    rest_ -= bytes.size();
    sink_(bytes);
  }

 private:
  std::uint64_t rest_;
  const Sink& sink_;
};

class FolderSource : public Source {
 public:
  explicit FolderSource(std::string folder) : folder_(std::move(folder)) {}

  void Fetch(const std::string& name, std::uint64_t most, const Sink& sink) override {
    std::ifstream file(folder_ + "/" + name, std::ios::binary);
    if (!file) throw Refusal(fmt::format("更新資料夾裡沒有 {}，沒有更新任何檔案。", name));
    Bounded bounded(most, sink);
    std::vector<char> buffer(std::size_t{1} << 16);
    while (file) {
      file.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
      bounded.Take({buffer.data(), static_cast<std::size_t>(file.gcount())});
    }
    if (file.bad()) throw Refusal(fmt::format("無法讀取更新檔 {}，沒有更新任何檔案。", name));
  }

 private:
  std::string folder_;
};

struct Cleanup {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};

// What a transfer hands its bytes to; an error in there waits until curl has returned.
struct Receiver {
  Bounded bounded;
  std::exception_ptr error;
};

std::size_t Receive(const char* bytes, std::size_t /*one*/, std::size_t count, void* to) {
  auto& receiver = *static_cast<Receiver*>(to);
  try {
    receiver.bounded.Take({bytes, count});
    return count;
  } catch (...) {
    receiver.error = std::current_exception();
    return 0;
  }
}

class WebSource : public Source {
 public:
  explicit WebSource(const std::string& host) : root_(AddressOf(host)) {
    if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) throw Refusal("無法使用網路，沒有更新任何檔案。");
    curl_.reset(curl_easy_init());
    if (!curl_) throw Refusal("無法使用網路，沒有更新任何檔案。");
  }

  void Fetch(const std::string& name, std::uint64_t most, const Sink& sink) override {
    Receiver receiver{Bounded(most, sink), nullptr};
    const std::string url = root_ + name;
    std::array<char, CURL_ERROR_SIZE> detail{};
    Prepare(url, receiver, detail.data());
    const CURLcode result = curl_easy_perform(curl_.get());
    if (receiver.error) std::rethrow_exception(receiver.error);
    if (result == CURLE_OK) return;
    throw Refusal(fmt::format("無法從更新主機完整取得 {}（{}），沒有更新任何檔案。", url,
                              detail[0] != '\0' ? detail.data() : curl_easy_strerror(result)));
  }

 private:
  void Prepare(const std::string& url, Receiver& receiver, char* detail) {
    constexpr long kConnectSeconds = 20;
    constexpr long kStillSeconds = 30;
    constexpr long kLeastBytesPerSecond = 100;
    constexpr long kMostRedirections = 5;
    CURL* const curl = curl_.get();
    curl_easy_reset(curl);
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    const char* const protocols = root_.starts_with("https:") ? "https" : "http,https";
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, protocols);
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, protocols);
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, kMostRedirections);
    curl_easy_setopt(curl, CURLOPT_FAILONERROR, 1L);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    if (root_.starts_with("http:")) curl_easy_setopt(curl, CURLOPT_NOPROXY, "*");
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, kLeastBytesPerSecond);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kStillSeconds);
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, detail);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &Receive);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &receiver);
  }

  std::string root_;
  std::unique_ptr<CURL, Cleanup> curl_;
};

// The host of "host:port/path", or of "[::1]:port/path".
std::string_view HostOnly(std::string_view address) {
  return address.substr(0, address.starts_with('[') ? address.find(']') + 1 : address.find_first_of(":/"));
}

}  // namespace

std::string AddressOf(const std::string& host) {
  std::string address = host;
  if (!host.starts_with("https://")) {
    const std::string_view name = HostOnly(host);
    // In front of an "@" stands a user, not a host.
    const bool isHere = host.find('@') == std::string::npos &&
                        (name == "localhost" || name == "127.0.0.1" || name == "[::1]");
    address = (isHere ? "http://" : "https://") + host;
  }
  return address.ends_with('/') ? address : address + "/";
}

std::unique_ptr<Source> OpenSource(const std::string& host) {
  if (host.empty()) throw Refusal("這份程式的設定裡沒有更新主機，沒有更新任何檔案。");
  if (host.starts_with('/')) return std::make_unique<FolderSource>(host);
  return std::make_unique<WebSource>(host);
}
