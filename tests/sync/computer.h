// One of a learner's computers: a program with its records and its upload window.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>

#include "base/day.h"
#include "core/message.h"
#include "core/program.h"
#include "core/text_utility.h"
#include "platform/window.h"
#include "records/essay_records.h"
#include "records/record_db.h"
#include "sync/upload_window.h"
#include "tests/core/core_fixture.h"
#include "tests/records/record_store.h"
#include "tests/sync/sync_server.h"

namespace marovane {

/// All that a program holds, and that is gone when it dies.
struct RunningProgram {
  RunningProgram(TestMachine& machine, const std::filesystem::path& recordsPath, const std::string& account);

  Program program;
  RecordDb records{program};
  FakeMain frmMain;
  Window<FrmUpload> frmUpload{[this] { return std::make_shared<FrmUpload>(program, records); }};
};

class Computer {
 public:
  /// @param answer what answers its requests
  /// @param account its learner's
  explicit Computer(FakeHttp::Answer answer, std::string account = SyncServer::kAccount);

  void Start();
  /// Another learner sits down, who has records of his own here.
  void LogIn(const std::string& account);
  const std::string& Account() const { return account_; }
  /// Ends the program as a kill does: nothing more is written.
  void Die();
  /// While the program is not running: the stamp of its records is gone, or is this.
  void LoseStamp(const std::string& stamp);
  /// While it is not running: an older copy takes the place of its records.
  void PutBack(const std::filesystem::path& copy);
  bool HasNothingUnsent();
  AppState& App() { return running->program.app; }
  RecordDb& Records() { return running->records; }

  void AddOk(const std::string& sentence, const std::string& essayId = "0") {
    Records().InsertOkSentence({.sId = NewId(), .sentence = sentence, .sDate = Today(), .essayId = essayId});
  }
  void AddErr(const std::string& sentence, const std::string& errcode) {
    Records().InsertErrSentence({.id = NewId(), .sentence = sentence, .errcode = errcode, .sDate = Today()});
  }
  std::string AddEssay(const std::string& text);
  /// A second process of the same learner, on a machine that shares the files. It synchronises and ends.
  void SyncInAnotherProcess(FakeHttp::Answer answer);
  /// Runs a synchronisation as the callers do. False when the program was killed in it.
  /// @param oldAccount one to merge with, "" for none
  bool Sync(const std::string& mode, const std::string& oldAccount = "");

  /// From now on its learner reads and closes every message.
  void CloseMessages();

  /// Rows of a statement on the record database.
  std::vector<std::string> Query(const std::string& sql) {
    return Rows(machine.realDatabases, recordsPath, sql);
  }
  /// All rows without local keys and flags, sorted.
  std::multiset<std::string> Contents();

  TestMachine machine;
  std::filesystem::path recordsPath = machine.home / "tmp" / "marovane" / "Marovane.mdb";
  std::unique_ptr<RunningProgram> running;
  int messages = 0;  ///< closed by CloseMessages

 private:
  base::Day Today() const { return base::DayOf(machine.loop.Now()); }
  std::string NewId() { return MakeRecId(running->program); }

  std::string account_;
};

/// The same for an account on a server, from its database file.
std::multiset<std::string> ServerContents(const std::filesystem::path& database, const std::string& account);
inline std::multiset<std::string> Contents(const SyncServer& server) {
  return ServerContents(server.Database(), SyncServer::kAccount);
}

}  // namespace marovane
