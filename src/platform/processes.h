// Processes of this machine.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/process.h"

namespace marovane {

struct ProcessInfo {
  int id = 0;
  std::string name;              ///< file name of its program
  std::filesystem::path folder;  ///< in which it works
};

/// A child whose standard output is read here, and which sees its standard input end when this object goes.
class PipedProcess {
 public:
  virtual ~PipedProcess() = default;
  /// The next line of its output without the line end; nothing when the output ended or the time, in
  /// milliseconds, ran out.
  virtual std::optional<std::string> ReadLine(int timeout) = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;
  /// Starts a program without waiting; its end wakes the event loop. Throws RunTimeError.
  /// @return its id
  virtual int Start(const base::ProcessStart& start) = 0;
  virtual std::unique_ptr<PipedProcess> StartPiped(const base::ProcessStart& start) = 0;
  /// The running processes of this user. One that has ended is not listed, even before anybody has waited
  /// for it.
  virtual std::vector<ProcessInfo> List() const = 0;
  virtual bool Terminate(int id) = 0;
};

}  // namespace marovane
