#include "updater/watchers.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "base/error.h"
#include "base/process.h"

namespace updater {

namespace {

namespace fs = std::filesystem;

// The window reads lines: per cent, a blank, the step. It closes when they end.
class UpdateWindow {
 public:
  explicit UpdateWindow(const fs::path& program)
      : process_({.program = program}, {.input = pipe_.readEnd.Get(), .error = STDERR_FILENO}) {
    pipe_.readEnd = {};
    // A window that hangs must not hold the update up.
    fcntl(pipe_.writeEnd.Get(), F_SETFL, O_NONBLOCK);
  }

  void Show(int percent, std::string_view step) {
    if (isGone_) return;
    const std::string line = fmt::format("{} {}\n", percent, step);
    isGone_ = write(pipe_.writeEnd.Get(), line.data(), line.size()) != static_cast<ssize_t>(line.size());
  }

 private:
  base::Pipe pipe_;
  base::Process process_;
  bool isGone_ = false;
};

class TerminalLine {
 public:
  TerminalLine() = default;
  ~TerminalLine() { std::fputs("\n", stdout); }
  TerminalLine(const TerminalLine&) = delete;
  TerminalLine& operator=(const TerminalLine&) = delete;

  void Show(int percent, std::string_view step) const {
    constexpr const char* kClearRest = "\033[K";
    // A terminal that has gone is no reason to fail.
    std::fputs(fmt::format("\r{}… {}%{}", step, percent, kClearRest).c_str(), stdout);
    std::fflush(stdout);
  }
};

template <class Display, class... Arguments>
Progress::Watcher WatchWith(const Arguments&... arguments) {
  return [display = std::make_shared<Display>(arguments...)](int percent, std::string_view step) {
    display->Show(percent, step);
  };
}

}  // namespace

bool HasDisplay() { return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr; }

Progress::Watcher OpenWatcher(const fs::path& windowProgram) {
  std::error_code error;
  try {
    if (HasDisplay() && fs::exists(windowProgram, error)) return WatchWith<UpdateWindow>(windowProgram);
  } catch (const base::Error& failure) {
    std::fputs((std::string(failure.what()) + "\n").c_str(), stderr);  // the update goes on without it
  }
  if (isatty(STDOUT_FILENO) == 0) return {};
  return WatchWith<TerminalLine>();
}

}  // namespace updater
