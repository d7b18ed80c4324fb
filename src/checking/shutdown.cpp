// The way out of the program, and the housekeeping on it.
#include "base/files.h"
#include "checking/main_window.h"
#include "core/error_report.h"
#include "core/message.h"
#include "core/resume_next.h"
#include "core/synchronise.h"
#include "records/age_cleaning.h"
#include "views/work_off_screen.h"

namespace marovane {

namespace {

void AdviseOnSize(Program& program, AgeCleaning& records) {
  constexpr int kMany = 5000;
  if (records.CountOkSentences() > kMany || records.CountErrSentences() > kMany) {
    ShowMessage(program, Message::kManySentences);
  }
}

// By the server's date, since a clock that is wrong must not cost anybody a record. Without a server it is so
// early that nothing goes.
void RemoveOldRecords(const AppState& app, AgeCleaning& records) {
  constexpr std::chrono::days kKept{180};
  records.RemoveBefore(std::chrono::sys_days{app.gServerDate} - kKept);
}

void KeepHouse(FrmMain& frmMain) {
  Program& program = frmMain.program;
  AgeCleaning records(program, frmMain.records);
  const bool isDesktopEdition = program.app.gEdition == "MRV";
  if (isDesktopEdition) AdviseOnSize(program, records);
  frmMain.Enabled = false;
  if (isDesktopEdition) RemoveOldRecords(program.app, records);
  WorkOffScreen work(program, Progress::kUploadingAtEnd);
  if (records.HasNewRows()) SyncOwnAccount(program, "UPLOAD");
  work.Finish();
}

void DeleteEngineFiles(base::Files& files, const std::string& folder) {
  Steps steps;
  for (const auto& name : files.List(folder)) {
    const bool isTemporary = name.starts_with("tmp") && name.find('.') != std::string::npos;
    if (isTemporary || name == "chkresult.txt") {
      steps.emplace_back([&files, path = folder + name] { files.Delete(path); });
    }
  }
  RunSkippingFailures(steps);
}

}  // namespace

// A database that fails is told of, but keeps nobody in the program.
void FrmMain::CloseAppProcdure() {
  try {
    KeepHouse(*this);
  } catch (const RunTimeError& error) {
    ReportUnhandledError(program, error);
  }
  Enabled = false;
  RunSkippingFailures({[this] { DeleteEngineFiles(machine.files, program.app.gEngineDir); }});
  DoCloseAppEffect();
}

void FrmMain::DoCloseAppEffect() {
  program.app.gFadeStep = -10;
  tmrTransparentForm.Enabled = true;
}

}  // namespace marovane
