// The local records replaced by those of the server.
#pragma once

#include <functional>
#include <string>

#include "platform/event_loop.h"
#include "protocol/stream.h"
#include "records/sync_records.h"

namespace marovane {

struct Program;

/// Collects all three streams beside the present records, and then replaces these at once. Until then nothing
/// has changed, whatever the server says and whenever the program ends.
class Reload {
 public:
  using Announce = std::function<void(const std::string& detail)>;

  Reload(Program& program, SyncRecords& records, Announce announce);
  /// Throws RunTimeError for a reply that makes no sense, BrokenOff when the learner breaks off; then nothing
  /// has changed.
  void Run();

 private:
  void LoadStream(protocol::RecordKind kind, const char* title);
  bool IsBrokenOff() const;
  void LetEventsIn();
  std::string AskPage(protocol::RecordKind kind, const std::string& lastId);
  void Log(const char* title, const std::string& reply, bool isFresh);
  std::vector<std::string> IdsFor(const std::vector<protocol::Row>& rows);
  std::string NextId();

  Program& program_;
  SyncRecords& records_;
  Announce announce_;
  base::LocalTime idTime_;  // time in the ids of the sentences
  int timesBrokenOff_ = 0;  // when it began
};

}  // namespace marovane
