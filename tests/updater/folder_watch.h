// Waits for what another program does to files.
#pragma once

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace updater {

/// Sees files of some folders written or renamed, from the moment at which it was made.
class FolderWatch {
 public:
  explicit FolderWatch(const std::vector<std::filesystem::path>& folders)
      : changes_(inotify_init1(IN_CLOEXEC)) {
    for (const auto& folder : folders) {
      if (inotify_add_watch(changes_, folder.c_str(), IN_MOVED_TO | IN_CLOSE_WRITE) >= 0) continue;
      close(changes_);
      throw std::runtime_error("cannot watch " + folder.string());
    }
  }
  ~FolderWatch() { close(changes_); }
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  /// Asks again after each change. False when the time ran out.
  template <typename Predicate>
  bool WaitUntil(Predicate predicate, std::chrono::milliseconds patience) const {
    const auto until = std::chrono::steady_clock::now() + patience;
    while (!predicate()) {
      const auto rest =
          std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
      pollfd polled{changes_, POLLIN, 0};
      if (rest.count() <= 0 || poll(&polled, 1, static_cast<int>(rest.count())) == 0) return false;
      std::array<char, 4096> events{};
      if (read(changes_, events.data(), events.size()) < 0) return false;
    }
    return true;
  }

 private:
  int changes_;
};

}  // namespace updater
