// File descriptors that a loop without windows looks after.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace marovane {

class FdWatches {
 public:
  using Callback = std::function<void()>;

  int Add(int fd, Callback callback);
  void Remove(int watch) { watches_.erase(watch); }
  bool IsEmpty() const { return watches_.empty(); }

  /// Waits until a watched descriptor or the extra one (-1: none) can be read, at most for the given time
  /// (for ever without one).
  /// @return the watches whose turn has come.
  std::vector<int> Wait(std::optional<std::chrono::milliseconds> atMost, int extraFd = -1) const;

  /// The callback of a watch, empty when it was removed meanwhile.
  Callback Find(int watch) const;

 private:
  struct Watch {
    int fd;
    Callback callback;
  };
  std::map<int, Watch> watches_;
  int last_ = 0;
};

}  // namespace marovane
