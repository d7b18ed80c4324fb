// The local records replaced by those of the server.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/run_time_error.h"
#include "protocol/stream.h"
#include "records/sync_records.h"

namespace marovane {

struct Program;

/// Rows that a reload has taken from this computer though nobody is known to have deleted them.
struct TakenAway {
  int rows = 0;
  std::string copy;  ///< path of the copy of all records from before
};

/// The server does not hand its records out.
class StreamRefused : public RunTimeError {
 public:
  explicit StreamRefused(const std::string& theWord)
      : RunTimeError("the server refuses its records: " + theWord), word(theWord) {}
  std::string word;
};

/// Collects all three streams beside the present records, and then replaces these at once. Until then nothing
/// has changed, whatever the server says and whenever the program ends.
class Reload {
 public:
  using Announce = std::function<void(const std::string& detail)>;

  Reload(Program& program, SyncRecords& records, const ReloadRules& rules, Announce announce);
  /// Throws RunTimeError for a reply that makes no sense, StreamRefused for a word of refusal, BrokenOff when
  /// the learner breaks off; then nothing has changed.
  /// @return nothing, and nothing has changed, when meanwhile something waits to be uploaded
  std::optional<TakenAway> Run();

 private:
  /// Adds the rows of a reply, and returns what to ask for next; nothing when the reply breaks off.
  using AddPage = std::function<std::optional<std::string>(const std::string& reply)>;

  void LoadRows(protocol::RecordKind kind, const char* title);
  void LoadGone();
  void LoadStream(const char* name, const AddPage& add);
  TakenAway KeepCopy();
  void RemoveCopy(const TakenAway& taken);
  bool IsBrokenOff() const;
  void LetEventsIn();
  std::string AskPage(const char* stream, const std::string& lastId);
  void Log(const char* title, const std::string& reply, bool isFresh);
  void GiveIds(std::vector<protocol::StreamRow>& rows);

  Program& program_;
  SyncRecords& records_;
  const ReloadRules rules_;
  Announce announce_;
  int timesBrokenOff_ = 0;  // when it began
};

}  // namespace marovane
