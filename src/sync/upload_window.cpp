#include "sync/upload_window.h"

#include <fmt/format.h>

#include <optional>

#include "base/day.h"
#include "core/error_report.h"
#include "core/message.h"
#include "core/server_access.h"
#include "core/window_shell.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/digest.h"
#include "protocol/form.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "records/record_db.h"
#include "sync/feedback_post.h"
#include "sync/reload.h"
#include "sync/requests.h"
#include "sync/upload.h"

namespace marovane {

namespace {

// What has to be the same on this computer and on the server: all records since the day of the age cleaning,
// which removes older ones from this computer alone.
std::string RecordsHeader(Program& program, SyncRecords& records) {
  constexpr std::chrono::days kKept{180};
  constexpr std::chrono::year kUnknown{1899};
  base::Day today = program.app.gServerDate;
  if (today.year() <= kUnknown) today = base::DayOf(program.machine.loop.Now());
  const base::Day from{std::chrono::sys_days{today} - kKept};
  return protocol::EncodeRecordsSince(base::IsoDay(from), records.Digest(from));
}

bool IsMerge(const std::string& mode) { return mode != "NOMSG" && mode != "DOWNLOAD" && mode != "UPLOAD"; }

}  // namespace

std::string SyncChecksum(SyncRecords& records) {
  using enum protocol::RecordKind;
  return protocol::NewestDigest(records.Newest(kEssay), records.Newest(kRight), records.Newest(kFaulty));
}

FrmUpload::FrmUpload(Program& program, RecordDb& records)
    : Form(program.machine, "frmUpload"),
      tmrSyncMessageWait(program.machine.loop, 1000),
      program_(program),
      records_(records),
      outbox_(program) {
  tmrSyncMessageWait.onTick = [this] { tmrSyncMessageWait_Timer(); };
}

void FrmUpload::Form_Load() { Left = kAway; }

// A failure of records or server ends the work but not its caller: a program must start without either.
void FrmUpload::SyncProgress(const std::string& mode) {
  const EventLoop::HandlerScope scope(machine.loop);
  Form& frmMain = program_.hall.frmMain->AsForm();
  const int left = frmMain.Left;
  const bool hadEssay = program_.app.gOpenEssay;
  frmMain.Left = kAway;
  Left = kAway;
  frmMain.Enabled = false;
  std::optional<RunTimeError> failure;
  timesBrokenOff_ = machine.loop.TimesBrokenOff();
  try {
    ShowProgress(Progress::kComparing, "");
    Synchronise(mode);
  } catch (const BrokenOff&) {
    // What could not be brought into step now is offered again next time.
  } catch (const RunTimeError& error) {
    failure = error;
  }
  program_.frmMessage->closeForm();
  machine.loop.DoEvents();
  // Not when another window had moved it away, which may have brought it back meanwhile, nor when an essay
  // has taken its place.
  const bool isReplaced = program_.app.gOpenEssay && !hadEssay;
  if (left > kAway && !isReplaced) frmMain.Left = left;
  if (failure) ReportUnhandledError(program_, *failure);
  if (IsMerge(mode)) {
    tmrSyncMessageWaitTag = mode;
    tmrSyncMessageWait.Enabled = true;
  }
  frmMain.Enabled = true;
  program_.app.gUploadFinished = true;
  Unload();
}

void FrmUpload::Synchronise(const std::string& mode) {
  if (mode != "DOWNLOAD") SendWaitingFeedback(program_);
  MarkOutboxSent(records_, outbox_);
  const bool pending = records_.HasPending() || !outbox_.IsEmpty();
  bool same = false;
  CompareSyncChecksum(same);
  if (same && !pending) return;
  ShowProgress(Progress::kSynchronising, "");
  program_.app.gUploadFinished = false;
  if (mode != "DOWNLOAD" && IsServerOnline(program_)) {
    UploadPending(program_, records_, outbox_, [this](const std::string& detail) {
      ShowDetail(detail);
      LetEventsIn();
    });
  }
  ShowProgress(Progress::kComparing, "");
  CompareSyncChecksum(same);
  if (!same && mode != "UPLOAD" && IsServerOnline(program_)) ReloadRecords();
}

void FrmUpload::CompareSyncChecksum(bool& result) {
  const std::string digest = SyncChecksum(records_);
  const Headers headers{{protocol::header::kRecords, RecordsHeader(program_, records_)}};
  try {
    result =
        PostPage(program_, protocol::page::kSyncChecksum,
                 protocol::PlainBody({{"regid", program_.app.gAccountNo}, {"checksum", digest}}), headers)
            .starts_with("OK");
  } catch (const BrokenOff&) {
    throw;
  } catch (const RunTimeError&) {
    result = false;
  }
}

// Reloading now would lose rows that are not uploaded yet.
void FrmUpload::ReloadRecords() {
  if (records_.HasPending() || !outbox_.IsEmpty()) return;
  for (const char* const table : {"errsentence", "oksentence", "essay"}) {
    ShowDetail(fmt::format("(delete : local {} record proc)", table));
    LetEventsIn();
  }
  Reload(program_, records_, [this](const std::string& detail) {
    ShowProgress(Progress::kSynchronising, detail);
  }).Run();
}

void FrmUpload::ShowProgress(const Progress& progress, const std::string& detail) {
  program_.app.gProgressDetail = detail;
  FrmMessage::ProgressMsgBox(program_, progress);
  LetEventsIn();
}

void FrmUpload::LetEventsIn() {
  machine.loop.DoEvents();
  if (machine.loop.TimesBrokenOff() != timesBrokenOff_) throw BrokenOff("synchronisation");
}

void FrmUpload::ShowDetail(const std::string& detail) {
  if (program_.app.gDetailMessage) ShowProgress(Progress::kSynchronising, detail);
}

// A merge ends without it, since the window goes before the first tick.
void FrmUpload::tmrSyncMessageWait_Timer() {
  tmrSyncMessageWait.Enabled = false;
  if (tmrSyncMessageWaitTag.empty()) FrmMessage::MessageBox(program_, Message::kMergeDone);
  program_.hall.frmMain->AsForm().Enabled = true;
  Unload();
}

}  // namespace marovane
