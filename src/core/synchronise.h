// Has the upload window work, for whoever needs what it brings about.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// Brings records and server into step, and returns when that has ended.
/// @param mode as for UploadRun
void SyncAndWait(Program& program, const std::string& mode);

/// The same for the learner's own account. Nothing of it waits for a synchronisation afterwards.
void SyncOwnAccount(Program& program, const std::string& mode);

}  // namespace marovane
