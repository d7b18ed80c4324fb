#include "sync/shared_records.h"

#include <fmt/format.h>

#include <filesystem>

#include "base/files.h"
#include "core/program.h"
#include "core/records_place.h"
#include "platform/machine.h"
#include "sync/outbox.h"

namespace marovane {

namespace {

namespace fs = std::filesystem;

void MoveInto(base::Files& files, const fs::path& from, const fs::path& folder) {
  files.CreateFolder(folder, true);
  files.Rename(from, folder / from.filename());
}

// What is no post, such as feedback, goes with the records.
void MoveOutbox(Program& program, const fs::path& outbox, const std::string& owner) {
  base::Files& files = program.machine.files;
  for (const auto& name : files.List(outbox)) {
    const auto post = ReadPost(name, files.Read(outbox / name));
    const std::string account = post && !post->account.empty() ? post->account : owner;
    MoveInto(files, outbox / name, fs::path(LearnerFolder(program, account)) / "outbox");
  }
}

// The learner's, or one in which it is set aside.
fs::path FolderWithoutRecords(const base::Files& files, const fs::path& learners) {
  fs::path folder = learners;
  for (int number = 1; files.FileExists(folder / "Marovane.mdb"); ++number) {
    folder = learners / "set-aside" / fmt::format("of-all-pupils-{}", number);
  }
  return folder;
}

}  // namespace

// The database comes last, after its log: as long as it is there, the work is not done.
void MoveSharedRecords(Program& program, const std::string& owner) {
  base::Files& files = program.machine.files;
  const fs::path shared = program.app.gTempDir + "/marovane";
  if (!files.FileExists(shared / "Marovane.mdb")) return;
  MoveOutbox(program, shared / "outbox", owner);
  const fs::path folder = FolderWithoutRecords(files, LearnerFolder(program, owner));
  for (const char* const name :
       {"dbver.set", "archive.mdb", "Marovane.mdb-wal", "Marovane.mdb-shm", "Marovane.mdb"}) {
    if (files.FileExists(shared / name)) MoveInto(files, shared / name, folder);
  }
}

}  // namespace marovane
