#include "essay/draft.h"

#include "base/digest.h"
#include "core/program.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

namespace marovane {

// A folder of their own: an update deletes the files beside the records. A file for each account: pupils
// share computers.
Draft::Draft(const Program& program)
    : files_(program.machine.files),
      folder_(base::Files::Path(program.app.gTempDir) / "marovane" / "drafts"),
      file_(folder_ / (base::SlotMd5(program.app.gAccountNo) + ".txt")) {}

std::string Draft::Read() const {
  try {
    return base::ReadIfThere(files_, file_);
  } catch (const RunTimeError&) {
    files_.Rename(file_, file_.string() + ".unreadable");
    throw;
  }
}

std::string Draft::Take() {
  kept_ = Read();
  earlier_ = "";
  return kept_;
}

void Draft::PutBack() {
  earlier_.reset();
  kept_.clear();
}

void Draft::Keep(const std::string& text) {
  if (text == kept_) return;
  if (!earlier_) earlier_ = Read();
  const bool areTwo = !earlier_->empty() && !text.empty();
  const std::string whole = *earlier_ + (areTwo ? "\r\n" : "") + text;
  if (!whole.empty()) {
    files_.CreateFolder(folder_, true);
    base::RewriteFile(files_, file_, whole, true);
  } else if (files_.FileExists(file_)) {
    files_.Delete(file_);
  }
  kept_ = text;
}

}  // namespace marovane
