// How often something may be tried.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <unordered_map>

namespace server {

using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

/// Counts the tries under each name: so many in a row are free, and so many come back each second. Ten
/// thousand names are remembered; a new one then takes the place of the one that was tried the longest time
/// ago. Serves one thread at a time.
class TryCounter {
 public:
  /// @param free tries in a row
  /// @param perSecond tries that come back
  TryCounter(double free, double perSecond, SteadyClock clock)
      : free_(free), perSecond_(perSecond), clock_(std::move(clock)) {}

  /// Whether the name may try now. Uses nothing up.
  bool IsOneLeft(const std::string& name) { return Left(name) >= 1; }
  /// Uses up one try, even when none is left.
  void Count(const std::string& name) { Left(name) -= 1; }
  /// Gives one back: the try was right.
  void Uncount(const std::string& name) { Left(name) += 1; }

 private:
  struct Tries {
    double left;
    std::chrono::steady_clock::time_point at;
  };
  double& Left(const std::string& name);

  double free_, perSecond_;
  SteadyClock clock_;
  std::unordered_map<std::string, Tries> tries_;
};

}  // namespace server
