// Files that fail or die at a chosen step.
#pragma once

#include "base/files.h"
#include "tests/support/fault.h"

namespace marovane {

/// Passes everything on to other files. Each change is a step of the fault; a Write or Append takes three:
/// before the file is touched, after it was opened (and emptied), after half of the bytes.
class FailingFiles : public base::Files {
 public:
  explicit FailingFiles(base::Files& files) : files_(files) {}

  bool FileExists(const Path& path) const override { return files_.FileExists(path); }
  bool FolderExists(const Path& path) const override { return files_.FolderExists(path); }
  std::string Read(const Path& path) const override { return files_.Read(path); }
  std::vector<std::string> List(const Path& folder) const override { return files_.List(folder); }
  void Write(const Path& path, std::string_view bytes, bool isPrivate) override;
  void Append(const Path& path, std::string_view bytes) override;
  void MakeExecutable(const Path& path) override;
  void Rename(const Path& from, const Path& to) override;
  void Delete(const Path& path) override;
  void CreateFolder(const Path& path, bool isPrivate) override;

  Fault fault;

 private:
  base::Files& files_;
};

}  // namespace marovane
