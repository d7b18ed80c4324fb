#include "core/synchronise.h"

#include "core/program.h"
#include "core/settings.h"
#include "platform/event_loop.h"
#include "platform/machine.h"

namespace marovane {

void SyncAndWait(Program& program, const std::string& mode) {
  auto& app = program.app;
  app.gUploadFinished = false;
  program.hall.frmUpload->SyncProgress(mode);
  program.machine.loop.WaitUntil([&app] { return app.gUploadFinished; });
}

void SyncOwnAccount(Program& program, const std::string& mode) {
  program.app.gUploadAccountNo = program.app.gAccountNo;
  SyncAndWait(program, mode);
  WriteNeedSync(program, "N");
}

}  // namespace marovane
