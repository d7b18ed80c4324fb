// The end of a run, and the housekeeping at it.
#include "base/files.h"
#include "checking/main_window.h"
#include "core/error_report.h"
#include "core/message.h"
#include "core/resume_next.h"
#include "core/synchronise.h"
#include "records/age_cleaning.h"
#include "records/record_db.h"
#include "views/work_off_screen.h"

namespace marovane {

namespace {

// By the server's date, since a clock that is wrong must not cost anybody a record. Without a server it is so
// early that nothing goes.
void RemoveOldRecords(Program& program, RecordDb& records) {
  constexpr std::chrono::days kKept{180};
  RemoveRecordsBefore(program, records, std::chrono::sys_days{program.app.gServerDate} - kKept);
}

void KeepHouse(FrmMain& frmMain) {
  constexpr int kMany = 5000;
  Program& program = frmMain.program;
  RecordDb& records = frmMain.records;
  const bool isDesktopEdition = program.app.gEdition == "MRV";
  if (isDesktopEdition && records.HasMoreSentencesThan(kMany)) ShowMessage(program, Message::kManySentences);
  frmMain.Enabled = false;
  if (isDesktopEdition) RemoveOldRecords(program, records);
  WorkOffScreen(program, Progress::kUploadingAtEnd, [&] {
    if (records.HasNewRows()) SyncOwnAccount(program, "UPLOAD");
  });
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

// A database that fails is reported, but keeps nobody in the program.
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
