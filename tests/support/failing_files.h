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
  std::vector<std::string> ListFolders(const Path& folder) const override {
    return files_.ListFolders(folder);
  }
  bool IsOwn(const Path& path) const override { return path != foreign && files_.IsOwn(path); }
  void Write(const Path& path, std::string_view bytes, bool isPrivate) override {
    fault.Step("opening " + path.string());
    files_.Write(path, "", isPrivate);
    fault.Step("writing " + path.string());
    files_.Write(path, bytes.substr(0, bytes.size() / 2), isPrivate);
    fault.Step("writing the rest of " + path.string());
    files_.Write(path, bytes, isPrivate);
  }
  void Append(const Path& path, std::string_view bytes) override {
    fault.Step("opening " + path.string());
    files_.Append(path, "");
    fault.Step("appending to " + path.string());
    files_.Append(path, bytes.substr(0, bytes.size() / 2));
    fault.Step("appending the rest to " + path.string());
    files_.Append(path, bytes.substr(bytes.size() / 2));
  }
  void MakeExecutable(const Path& path) override {
    fault.Step("making executable " + path.string());
    files_.MakeExecutable(path);
  }
  void Rename(const Path& from, const Path& to) override {
    fault.Step("renaming " + from.string());
    files_.Rename(from, to);
  }
  void Delete(const Path& path) override {
    fault.Step("deleting " + path.string());
    files_.Delete(path);
  }
  void CreateFolder(const Path& path, bool isPrivate) override {
    fault.Step("creating " + path.string());
    files_.CreateFolder(path, isPrivate);
  }
  void DeleteEmptyFolder(const Path& path) override {
    fault.Step("deleting " + path.string());
    files_.DeleteEmptyFolder(path);
  }
  void MakePrivate(const Path& path) override {
    fault.Step("closing to others " + path.string());
    files_.MakePrivate(path);
  }

  Fault fault;
  Path foreign;  ///< this one belongs to somebody else

 private:
  base::Files& files_;
};

}  // namespace marovane
