#include "platform/headless/fd_watches.h"

#include <poll.h>

#include <algorithm>
#include <limits>

namespace marovane {

int FdWatches::Add(int fd, Callback callback) {
  watches_[++last_] = {fd, std::move(callback)};
  return last_;
}

std::vector<int> FdWatches::Wait(std::optional<std::chrono::milliseconds> atMost, int extraFd) const {
  std::vector<pollfd> polled;
  std::vector<int> order;
  for (const auto& [id, watch] : watches_) {
    polled.push_back({watch.fd, POLLIN, 0});
    order.push_back(id);
  }
  if (extraFd >= 0) polled.push_back({extraFd, POLLIN, 0});
  constexpr auto kLongest = std::chrono::milliseconds{std::numeric_limits<int>::max()};
  const int timeout = atMost ? static_cast<int>(std::min(*atMost, kLongest).count()) : -1;

  std::vector<int> ready;
  if (poll(polled.data(), polled.size(), timeout) <= 0) return ready;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (polled[i].revents != 0) ready.push_back(order[i]);
  }
  return ready;
}

FdWatches::Callback FdWatches::Find(int watch) const {
  const auto found = watches_.find(watch);
  return found == watches_.end() ? Callback{} : found->second.callback;
}

}  // namespace marovane
