#include "updater/source.h"

#include <fmt/format.h>

#include <fstream>
#include <vector>

#include "base/http.h"
#include "updater/refusal.h"

namespace updater {

namespace {

constexpr const char* kTooLong = "更新檔比清單所說的還大，沒有更新任何檔案。";

// Passes bytes on until there are more than were promised.
class Bounded {
 public:
  Bounded(std::uint64_t most, const Sink& sink) : rest_(most), sink_(sink) {}
  void Append(std::string_view bytes) {
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
      bounded.Append({buffer.data(), static_cast<std::size_t>(file.gcount())});
    }
    if (file.bad()) throw Refusal(fmt::format("無法讀取更新檔 {}，沒有更新任何檔案。", name));
  }

 private:
  std::string folder_;
};

class WebSource : public Source {
 public:
  explicit WebSource(const std::string& host) : root_(AddressOf(host)), session_(Limits(root_)) {}

  void Fetch(const std::string& name, std::uint64_t most, const Sink& sink) override {
    Bounded bounded(most, sink);
    const std::string url = root_ + name;
    try {
      session_.Fetch({.method = "GET", .url = url}, [&](std::string_view bytes) { bounded.Append(bytes); });
    } catch (const base::HttpError& error) {
      throw Refusal(fmt::format("無法從更新主機完整取得 {}（{}），沒有更新任何檔案。", url, error.what()));
    }
  }

 private:
  static base::HttpLimits Limits(const std::string& root) {
    return {.leastBytesPerSecond = 100,
            .slowSeconds = 30,
            .redirections = 5,
            .isSecure = root.starts_with("https:"),
            .refusesErrors = true};
  }

  std::string root_;
  base::HttpSession session_;
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
    // Before an "@" there is a user, not a host.
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

}  // namespace updater
