#include "essay/draft.h"

#include "base/digest.h"
#include "base/files.h"
#include "core/program.h"
#include "platform/machine.h"

namespace marovane {

namespace {

using Path = base::Files::Path;

// A folder of their own: an update deletes the files beside the records.
Path DraftFolder(const Program& program) { return Path(program.app.gTempDir) / "marovane" / "drafts"; }

// Pupils share computers.
Path DraftFile(const Program& program) {
  return DraftFolder(program) / (base::SlotMd5(program.app.gAccountNo) + ".txt");
}

}  // namespace

std::string ReadDraft(const Program& program) {
  return base::ReadIfThere(program.machine.files, DraftFile(program));
}

void WriteDraft(Program& program, const std::string& text) {
  base::Files& files = program.machine.files;
  const Path file = DraftFile(program);
  if (!text.empty()) {
    files.CreateFolder(DraftFolder(program), true);
    base::RewriteFile(files, file, text, true);
  } else if (files.FileExists(file)) {
    files.Delete(file);
  }
}

}  // namespace marovane
