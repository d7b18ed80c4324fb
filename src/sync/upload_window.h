// The hidden window that keeps several computers of one learner in step.
#pragma once

#include <string>

#include "core/program.h"
#include "core/windows.h"
#include "platform/timer.h"
#include "records/sync_records.h"
#include "sync/outbox.h"

namespace marovane {

class RecordDb;
struct Progress;

class FrmUpload : public Form, public UploadRun {
 public:
  FrmUpload(Program& program, RecordDb& records);

  /// Brings records and server into step; the window has gone when it returns.
  /// @param mode "NOMSG", "UPLOAD" (nothing comes down), "DOWNLOAD" (nothing goes up), or "" for a merge
  void SyncProgress(const std::string& mode) override;

  void Form_Load() override;

  Timer tmrSyncMessageWait;  ///< would show the closing message of a merge
  std::string tmrSyncMessageWaitTag;

 private:
  void Synchronise(const std::string& mode);
  void CompareSyncChecksum(bool& result);
  void ReloadRecords();
  void ShowProgress(const Progress& progress, const std::string& detail);
  void ShowDetail(const std::string& detail);
  void LetEventsIn();
  void tmrSyncMessageWait_Timer();

  Program& program_;
  SyncRecords records_;
  Outbox outbox_;
  int timesBrokenOff_ = 0;  // when it began
};

/// Digest of the newest essay and the newest sentences, as the server makes it too.
std::string SyncChecksum(SyncRecords& records);

}  // namespace marovane
