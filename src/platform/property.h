// A value that is assigned like a plain one and notifies its watchers.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace marovane {

/// Keeps a watcher alive; dropping it ends the watching.
using Subscription = std::shared_ptr<void>;

template <class T>
class Property {
 public:
  using Watcher = std::function<void(const T&)>;

  Property() = default;
  explicit Property(T initial) : value_(std::move(initial)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property& other) { return *this = other.value_; }

  /// Assigns, then notifies the watchers, also when the value is the same as before: some views act on every
  /// assignment (a colour that is given to the present selection).
  Property& operator=(const T& value) {
    value_ = value;
    Notify();
    return *this;
  }

  operator const T&() const { return value_; }
  const T& operator()() const { return value_; }

  [[nodiscard]] Subscription Watch(Watcher watcher) {
    auto kept = std::make_shared<Watcher>(std::move(watcher));
    watchers_.push_back(kept);
    return kept;
  }

 private:
  void Notify() {
    std::erase_if(watchers_, [](const auto& watcher) { return watcher.expired(); });
    const auto told = watchers_;  // a watcher may add another
    for (const auto& weak : told) {
      if (auto watcher = weak.lock()) (*watcher)(value_);
    }
  }

  T value_{};
  std::vector<std::weak_ptr<Watcher>> watchers_;
};

}  // namespace marovane
