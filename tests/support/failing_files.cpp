#include "tests/support/failing_files.h"

namespace marovane {

void FailingFiles::Write(const Path& path, std::string_view bytes, bool isPrivate) {
  fault.Step("opening " + path.string());
  files_.Write(path, "", isPrivate);
  fault.Step("writing " + path.string());
  files_.Write(path, bytes.substr(0, bytes.size() / 2), isPrivate);
  fault.Step("writing the rest of " + path.string());
  files_.Write(path, bytes, isPrivate);
}

void FailingFiles::Append(const Path& path, std::string_view bytes) {
  fault.Step("opening " + path.string());
  files_.Append(path, "");
  fault.Step("appending to " + path.string());
  files_.Append(path, bytes.substr(0, bytes.size() / 2));
  fault.Step("appending the rest to " + path.string());
  files_.Append(path, bytes.substr(bytes.size() / 2));
}

void FailingFiles::MakeExecutable(const Path& path) {
  fault.Step("making executable " + path.string());
  files_.MakeExecutable(path);
}

void FailingFiles::Rename(const Path& from, const Path& to) {
  fault.Step("renaming " + from.string());
  files_.Rename(from, to);
}

void FailingFiles::Delete(const Path& path) {
  fault.Step("deleting " + path.string());
  files_.Delete(path);
}

void FailingFiles::CreateFolder(const Path& path, bool isPrivate) {
  fault.Step("creating " + path.string());
  files_.CreateFolder(path, isPrivate);
}

}  // namespace marovane
