// Result pages, kept for a while under addresses that nobody can guess.
#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace server {

/// Holds the last `capacity` pages; a new one drops the oldest. May be used from several threads.
class PageStore {
 public:
  explicit PageStore(std::size_t capacity) : capacity_(capacity) {}

  /// Returns the page's path below the server's root, "pages/….htm".
  std::string Keep(std::string page);
  std::optional<std::string> Find(std::string_view path) const;

 private:
  const std::size_t capacity_;
  mutable std::mutex mutex_;
  std::unordered_map<std::string, std::string> pages_;
  std::deque<std::string> order_;
};

}  // namespace server
