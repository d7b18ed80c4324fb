#include "tests/sync/computer.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/provisioning.h"

namespace marovane {

RunningProgram::RunningProgram(TestMachine& machine, const std::filesystem::path& recordsPath,
                               const std::string& account)
    : program(machine.machine, {}), frmMain(machine.machine) {
  auto& app = program.app;
  app.gEdition = "MRV";
  app.gTempDir = (machine.home / "tmp").string();
  app.gSetupFile = app.gTempDir + "/marovane/setup.set";
  app.gServerUrlRoot = "http://server/";
  app.gAccountNo = account;
  app.gEduBackground = "u2";
  app.gConnRecords = "Data Source=" + recordsPath.string() + ";";
  frmMain.Left = 4711;
  FakeHall::Lead(program.hall.frmMain, frmMain);
  program.hall.frmUpload.LeadsTo([this]() -> UploadRun& { return *frmUpload; });
}

Computer::Computer(FakeHttp::Answer answer, std::string account) : account_(std::move(account)) {
  CreateRecords(machine.realDatabases, recordsPath);
  machine.http.Route("", std::move(answer));
  Start();
}

// As every start does: a stamp that was lost is written anew.
void Computer::Start() {
  running = std::make_unique<RunningProgram>(machine, recordsPath, account_);
  CheckDatabaseBuild(running->program);
}

void Computer::LoseStamp(const std::string& stamp) {
  const auto path = recordsPath.parent_path() / "dbver.set";
  if (stamp.empty()) {
    std::filesystem::remove(path);
  } else {
    machine.realFiles.Write(path, stamp, true);
  }
}

void Computer::PutBack(const std::filesystem::path& copy) {
  for (const char* const ending : {"-wal", "-shm"}) std::filesystem::remove(recordsPath.string() + ending);
  std::filesystem::rename(copy, recordsPath);
}

bool Computer::HasNothingUnsent() {
  const auto outbox = recordsPath.parent_path() / "outbox";
  const bool isEmpty = !std::filesystem::exists(outbox) ||
                       std::ranges::none_of(std::filesystem::directory_iterator(outbox),
                                            [](const auto& file) { return file.is_regular_file(); });
  return isEmpty && Query(
                        "select 1 from oksentence where upload <> 'Y' union select 1 from errsentence"
                        " where upload <> 'Y' union select 1 from essay where upload <> 'Y'"
                        " union select 1 from gone where upload <> 'Y'")
                        .empty();
}

void Computer::LogIn(const std::string& account) {
  Die();
  account_ = account;
  recordsPath = machine.home / "tmp/marovane/learners" / ("no-" + account) / "Marovane.mdb";
  if (!std::filesystem::exists(recordsPath)) CreateRecords(machine.realDatabases, recordsPath);
  Start();
}

void Computer::SyncInAnotherProcess(FakeHttp::Answer answer) {
  TestMachine other;
  other.loop.SetClock(machine.loop.Now());
  other.http.Route("", std::move(answer));
  RunningProgram second(other, recordsPath, account_);
  second.program.app.gUploadAccountNo = account_;
  second.program.hall.frmUpload->SyncProgress("NOMSG");
}

void Computer::Die() {
  running.reset();
  machine.databases.fault.Reset();
  machine.files.fault.Reset();
  machine.http.fault.Reset();
}

std::string Computer::AddEssay(const std::string& text) {
  const std::string id = NewId();
  EssayRecords(Records()).InsertEssay({.essayId = id,
                                       .workId = id + "1",
                                       .quiz = "我的短文",
                                       .orgEssay = text,
                                       .newEssay = text,
                                       .sDate = Today()});
  return id;
}

bool Computer::Sync(const std::string& mode, const std::string& oldAccount) {
  App().gUploadAccountNo = oldAccount.empty() ? account_ : oldAccount;
  App().gUploadFinished = false;
  return !DiesIn([&] { running->program.hall.frmUpload->SyncProgress(mode); });
}

void Computer::CloseMessages() {
  machine.windows.onShown = [this](Form& form, bool isModal) {
    if (!isModal) return;
    ++messages;
    machine.loop.Post([&form] { dynamic_cast<FrmMessage&>(form).cmdOK.Click.Raise(); });
  };
}

std::multiset<std::string> Computer::Contents() {
  std::multiset<std::string> all;
  for (const char* const sql :
       {"select '', sentence, sDate, essayId, essaySId, haveHtm, '' from oksentence",
        "select errcode, sentence, sDate, essayId, essaySId, haveHtm, '' from errsentence",
        "select sDate, essayId, workId, finalSet, quiz, orgEssay, newEssay from essay"}) {
    const auto rows = Query(sql);
    all.insert(rows.begin(), rows.end());
  }
  return all;
}

std::multiset<std::string> ServerContents(const std::filesystem::path& database, const std::string& account) {
  std::multiset<std::string> all;
  for (const char* const sql :
       {"select errcode, sentence, day, essay_id, essay_s_id, have_htm, '' from sentence",
        "select day, essay_id, work_id, final_set, quiz, org_essay, new_essay from essay"}) {
    const auto rows = ServerRows(database, fmt::format("{} where account = '{}'", sql, account));
    all.insert(rows.begin(), rows.end());
  }
  return all;
}

}  // namespace marovane
