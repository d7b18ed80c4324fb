// What a bench says of its measurements.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

/// Milliseconds that a call took.
template <class Call>
double Milliseconds(const Call& call) {
  const auto start = Clock::now();
  call();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// A quantile of measurements, 0 to 1.
inline double Quantile(std::vector<double> times, double quantile) {
  std::sort(times.begin(), times.end());
  return times[static_cast<std::size_t>(quantile * static_cast<double>(times.size() - 1))];
}

inline void Print(const std::string& what, const std::vector<double>& times) {
  fmt::print("{:<42} median {:8.3f} ms   p99 {:8.3f} ms   ({} runs)\n", what, Quantile(times, 0.5),
             Quantile(times, 0.99), times.size());
}

}  // namespace bench
