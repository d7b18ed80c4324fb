// What every bench needs: its main procedure, its measurements, and what it says of them.
#pragma once

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
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

/// The lines of a file that are neither empty nor comments. Throws std::runtime_error when there are none.
inline std::vector<std::string> ReadLines(const std::string& path) {
  std::ifstream in(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  }
  if (lines.empty()) throw std::runtime_error("no lines in " + path);
  return lines;
}

/// Runs a program in the working directory to its end. Throws std::runtime_error when it fails.
inline void RunProgram(const std::string& program, const std::string& argument) {
  const pid_t child = fork();
  if (child == 0) {
    execl(program.c_str(), program.c_str(), argument.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error(program + " failed");
}

/// The main procedure of a bench with arguments: what it throws is printed, and makes it fail.
inline int Main(int argc, char** argv, void (*run)(const std::vector<std::string>& args)) {
  try {
    run({argv + 1, argv + argc});
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return EXIT_FAILURE;
  }
}

}  // namespace bench
