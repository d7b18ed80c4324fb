// Programs that a test runs to their end.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "base/process.h"

namespace marovane {

/// Runs a program with this text, short enough for any pipe, on its standard input. One that does not end, or
/// leaves somebody behind who can still write to its output or errors, is a failure of the test.
inline base::RunResult RunProgram(const base::ProcessStart& start, const std::string& input = "") {
  constexpr std::chrono::minutes kPatience{10};
  base::Pipe pipe;
  EXPECT_EQ(write(pipe.writeEnd.Get(), input.data(), input.size()), static_cast<ssize_t>(input.size()));
  pipe.writeEnd.Close();
  const auto result = base::RunToEnd(start, kPatience, pipe.readEnd.Get());
  EXPECT_TRUE(result) << start.program << " does not end";
  return result.value_or(base::RunResult{-1, "", ""});
}

}  // namespace marovane
