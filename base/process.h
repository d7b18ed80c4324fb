// Programs that are started, without a shell.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/file_descriptor.h"

namespace base {

struct ProcessStart {
  std::filesystem::path program;  ///< one without a folder is looked for along PATH
  std::vector<std::string> arguments = {};
  std::filesystem::path workingFolder = {};  ///< empty: that of this program
  /// Goes on when this program's terminal is closed, and can be ended with all that it has started.
  bool hasOwnSession = false;
  /// "NAME=value", all that it gets; nothing for that of this program.
  std::optional<std::vector<std::string>> environment = {};
};

/// Descriptors of standard input, output and error; -1: /dev/null.
struct Streams {
  int input = -1;
  int output = -1;
  int error = -1;
};

/// Both ends are closed in a program that is started.
struct Pipe {
  Pipe();
  FileDescriptor readEnd, writeEnd;
};

/// A child of this program. It gets no file descriptor but its streams, and begins with no signal blocked or
/// ignored. It runs on when this object goes.
class Process {
 public:
  /// Throws Error when the program cannot be started.
  explicit Process(const ProcessStart& start, const Streams& streams = {});

  int Id() const { return id_; }
  /// A descriptor that can be read when the child has ended.
  int End() const { return end_.Get(); }
  /// Its exit status, or 128 and the signal that ended it; nothing when the time ran out. To be called no
  /// more once it has given one.
  std::optional<int> Wait(std::chrono::milliseconds patience);
  /// Ends it at once, with its session if it has one of its own.
  void Kill() const;

 private:
  bool hasOwnSession_;
  int id_;
  FileDescriptor end_;
};

/// What a child writes, line by line.
class LineReader {
 public:
  explicit LineReader(FileDescriptor output) : output_(std::move(output)) {}
  /// The next line without the line end, also the last one without any; nothing when the output ended or the
  /// time ran out.
  std::optional<std::string> ReadLine(std::chrono::milliseconds patience);

 private:
  std::optional<std::string> NextLine();

  FileDescriptor output_;
  std::string read_;
  bool hasEnded_ = false;
};

struct RunResult {
  int status = 0;  ///< exit status; 128 and the signal when one ended it
  std::string output, errors;
};

/// Runs a program until it has ended and nobody writes to its output and errors any more. What is left of its
/// session, if it has one of its own, is then ended. Throws Error when it cannot be started.
/// @param input descriptor of its standard input; -1: /dev/null
/// @return nothing when the time ran out; it is then ended
std::optional<RunResult> RunToEnd(const ProcessStart& start, std::chrono::milliseconds patience,
                                  int input = -1);

}  // namespace base
