// Stretches in which an error ends one statement and the next one runs.
#pragma once

#include <functional>
#include <initializer_list>
#include <vector>

#include "platform/run_time_error.h"

namespace marovane {

using Steps = std::vector<std::function<void()>>;

/// Runs each step; one that fails is passed over.
inline void RunSkippingFailures(const Steps& steps) {
  for (const auto& step : steps) {
    try {
      step();
    } catch (const RunTimeError&) {
      continue;
    }
  }
}

/// Runs the steps; one that fails ends them.
inline void RunInOrder(const Steps& steps) {
  for (const auto& step : steps) step();
}

}  // namespace marovane
