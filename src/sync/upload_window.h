// The hidden window that keeps several computers of one learner in step.
#pragma once

#include <optional>
#include <string>

#include "core/program.h"
#include "core/windows.h"
#include "protocol/server_state.h"
#include "records/sync_records.h"
#include "sync/outbox.h"
#include "sync/reload.h"
#include "sync/upload.h"

namespace marovane {

class RecordDb;
struct Message;
struct Progress;

class FrmUpload : public Form, public UploadRun {
 public:
  FrmUpload(Program& program, RecordDb& records);

  /// Brings records and server into step; the window has gone when it returns.
  /// @param mode "NOMSG", "UPLOAD" (nothing comes down), "DOWNLOAD" (nothing goes up), or "" for a merge
  void SyncProgress(const std::string& mode) override;
  bool SendEverything() override;

  void Form_Load() override;

 private:
  void Synchronise(const std::string& mode);
  void CompareSyncChecksum();
  void FollowServer();
  void NoteSeen();
  void UploadRecords();
  void Download(const std::string& mode);
  bool ReloadRecords();
  void TellOutcome(const std::string& mode);
  void TellMerged();
  void Tell(const Message& message, const std::string& detail);
  void ShowProgress(const Progress& progress, const std::string& detail);
  void ShowDetail(const std::string& detail);
  void LetEventsIn();

  Program& program_;
  SyncRecords records_;
  Outbox outbox_;
  // As the latest comparison has it.
  bool isSame_ = false;
  bool isAnswered_ = false;                      // by a server, not by the page of a network
  std::optional<protocol::ServerState> server_;  // what it said of itself
  Refusals refusals_;
  int refusedBefore_ = 0;  // rows of which the learner has been told
  TakenAway taken_;
  std::optional<RecordCounts> merged_;  // what a merge has brought
  int timesBrokenOff_ = 0;              // when it began
};

/// Digest of the newest essay and the newest sentences, as the server makes it too.
std::string SyncChecksum(SyncRecords& records);

}  // namespace marovane
