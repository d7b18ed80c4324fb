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
#include "protocol/account.h"
#include "protocol/digest.h"
#include "protocol/form.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"
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
    : Form(program.machine, "frmUpload"), program_(program), records_(records), outbox_(program) {}

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
  } catch (const StreamRefused& refused) {
    refusals_.login = refused.word == protocol::refusal::kLogin;
    if (!refusals_.login) failure = refused;
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
  if (!failure && machine.loop.TimesBrokenOff() == timesBrokenOff_) TellOutcome(mode);
  frmMain.Enabled = true;
  program_.app.gUploadFinished = true;
  Unload();
}

// Whoever gets no for an answer keeps the records, so nobody has to hear why.
bool FrmUpload::SendEverything() {
  const EventLoop::HandlerScope scope(machine.loop);
  program_.app.gUploadAccountNo = program_.app.gAccountNo;
  timesBrokenOff_ = machine.loop.TimesBrokenOff();
  bool isAllThere = false;
  try {
    ShowProgress(Progress::kComparing, "");
    Synchronise("NOMSG");
    isAllThere = isSame_ && records_.IsAllSent() && outbox_.IsEmpty();
  } catch (const RunTimeError&) {
    // Then it is not.
  }
  program_.frmMessage->closeForm();
  program_.app.gUploadFinished = true;
  records_.Close();
  Unload();
  return isAllThere;
}

void FrmUpload::Synchronise(const std::string& mode) {
  if (program_.app.gAccountNo.empty()) return;  // nobody's records are on any server
  if (mode != "DOWNLOAD") SendWaitingFeedback(program_);
  Upload::MarkOutboxSent(records_, outbox_);
  CompareSyncChecksum();
  if (refusals_.account || refusals_.login) return;
  FollowServer();
  if (mode == "NOMSG" && isAnswered_) refusedBefore_ = records_.OfferRefusedAgain();
  const bool pending = records_.HasPending() || !outbox_.IsEmpty();
  if (isSame_ && !pending && !IsMerge(mode)) return NoteSeen();
  ShowProgress(Progress::kSynchronising, "");
  program_.app.gUploadFinished = false;
  if (mode != "DOWNLOAD" && IsServerOnline(program_)) UploadRecords();
  if (pending || !isAnswered_) {
    ShowProgress(Progress::kComparing, "");
    CompareSyncChecksum();
    FollowServer();  // it may not have answered before
  }
  const bool hasMore = !isSame_ || IsMerge(mode);  // what is merged comes with the streams
  if (hasMore && mode != "UPLOAD" && IsServerOnline(program_)) Download(mode);
  NoteSeen();
}

void FrmUpload::Download(const std::string& mode) {
  const RecordCounts before = records_.Count();
  if (!ReloadRecords()) return;
  const RecordCounts after = records_.Count();
  merged_ =
      RecordCounts{.sentences = after.sentences - before.sentences, .essays = after.essays - before.essays};
  if (mode != "DOWNLOAD" && records_.HasPending()) UploadRecords();  // what the server had lost
  CompareSyncChecksum();
}

void FrmUpload::CompareSyncChecksum() {
  const std::string digest = SyncChecksum(records_);
  const Belongs belongs = records_.BelongsTo();
  const Headers headers{{protocol::header::kRecords, RecordsHeader(program_, records_)},
                        {protocol::header::kSeen, protocol::EncodeSeen(belongs.server, belongs.seen)}};
  std::string reply;
  try {
    reply =
        PostPage(program_, protocol::page::kSyncChecksum,
                 protocol::PlainBody({{"regid", program_.app.gAccountNo}, {"checksum", digest}}), headers);
  } catch (const BrokenOff&) {
    throw;
  } catch (const RunTimeError&) {
    reply.clear();
  }
  server_ = protocol::ParseComparison(reply);
  isAnswered_ = server_ || reply == "OK" || reply == "OK_" || reply == "DIFFERENT";
  isSame_ = isAnswered_ && reply.starts_with("OK");
  refusals_.account = refusals_.account || protocol::refusal::IsOfAccount(reply);
  refusals_.login = refusals_.login || reply == protocol::refusal::kLogin;
}

// The flags speak of one account on one server, as far as this has come. Another server, and one that was
// restored from an older copy, may lack what this computer has.
void FrmUpload::FollowServer() {
  if (!isAnswered_) return;
  const Belongs belongs = records_.BelongsTo();
  const std::string account = protocol::CleanAccount(program_.app.gAccountNo);
  const std::string server = server_ ? server_->server : "";
  const bool isKnown = belongs.account == account && belongs.server == server;
  // One that had no name and has one now has been brought up to date.
  const bool hadNoName = belongs.account.empty() || (belongs.account == account && belongs.server.empty());
  const bool knowsNothing = server_ && server_->latestPost.empty() && records_.HasSent();
  const bool isRestored = server_ && !server_->knowsSeen;
  if (isRestored || (!isKnown && (!hadNoName || knowsNothing))) {
    records_.RepeatTo({account, server, "", true});
  } else if (!isKnown) {
    records_.SetBelongsTo({account, server, "", belongs.isBehind});
  }
}

void FrmUpload::NoteSeen() {
  if (!isSame_ || !isAnswered_) return;
  records_.SetBelongsTo({protocol::CleanAccount(program_.app.gAccountNo), server_ ? server_->server : "",
                         server_ ? server_->latestPost : "", false});
}

void FrmUpload::UploadRecords() {
  const bool isFollowed = server_ && records_.BelongsTo().server == server_->server;
  const Refusals refusals =
      Upload(program_, records_, outbox_, isFollowed, [this](const std::string& detail) {
        ShowDetail(detail);
        LetEventsIn();
      }).Run();
  refusals_.account = refusals_.account || refusals.account;
  refusals_.login = refusals_.login || refusals.login;
  refusals_.rows += refusals.rows;
}

// Reloading now would lose rows that are not uploaded yet. A server that says what it is has to be heard: its
// records without their ids would seem to be others.
bool FrmUpload::ReloadRecords() {
  if (records_.HasPending() || !outbox_.IsEmpty()) return false;
  const Belongs belongs = records_.BelongsTo();
  if (!belongs.server.empty() && !isAnswered_) return false;
  for (const char* const table : {"errsentence", "oksentence", "essay"}) {
    ShowDetail(fmt::format("(delete : local {} record proc)", table));
    LetEventsIn();
  }
  const ReloadRules rules{.hasIds = server_.has_value(), .isBehind = belongs.isBehind};
  const auto taken = Reload(program_, records_, rules, [this](const std::string& detail) {
                       ShowProgress(Progress::kSynchronising, detail);
                     }).Run();
  if (taken) taken_ = *taken;
  return taken.has_value();
}

void FrmUpload::TellOutcome(const std::string& mode) {
  auto& app = program_.app;
  if (refusals_.account && (IsMerge(mode) || !app.gAccountRefusalShown)) {
    app.gAccountRefusalShown = true;
    Tell(Message::kWrongAccount, "");
  } else if (refusals_.login && IsMerge(mode)) {
    Tell(Message::kPasswordNeeded, "");  // whoever has asked for it gets an answer each time
  } else if (refusals_.login) {
    program_.proof.TellRefusal();
  } else if (IsMerge(mode)) {
    TellMerged();
  }
  const int refused = refusals_.rows - refusedBefore_;
  if (refused > 0) Tell(Message::kRowsRefused, fmt::format("共 {} 筆", refused));
  if (taken_.rows > 0) {
    Tell(Message::kRecordsSetAside, fmt::format("共 {} 筆，另存於 {}", taken_.rows, taken_.copy));
  }
}

void FrmUpload::TellMerged() {
  if (!merged_) return Tell(Message::kNetworkDown, "");
  const auto& [sentences, essays] = *merged_;
  Tell(Message::kMergeDone, sentences + essays <= 0
                                ? "沒有新的記錄"
                                : fmt::format("新增 {} 個句子、{} 篇短文", sentences, essays));
}

// Somebody may still wait for the answer to a question of his own.
void FrmUpload::Tell(const Message& message, const std::string& detail) {
  auto& app = program_.app;
  const std::string answer = app.gMsgResult;
  app.gProgressDetail = detail;
  FrmMessage::MessageBox(program_, message);
  app.gMsgResult = answer;
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

}  // namespace marovane
