#include "server/store/page_store.h"

#include <fmt/format.h>

#include "server/services/random_text.h"

namespace server {

std::string PageStore::Keep(std::string page) {
  std::string path = fmt::format("pages/{}.htm", RandomHex(16));
  const std::lock_guard lock(mutex_);
  pages_.emplace(path, std::move(page));
  order_.push_back(path);
  if (order_.size() > capacity_) {
    pages_.erase(order_.front());
    order_.pop_front();
  }
  return path;
}

std::optional<std::string> PageStore::Find(std::string_view path) const {
  const std::lock_guard lock(mutex_);
  const auto page = pages_.find(std::string(path));
  if (page == pages_.end()) return std::nullopt;
  return page->second;
}

}  // namespace server
