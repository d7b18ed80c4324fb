#include "sync/reload.h"

#include <array>

#include "base/day.h"
#include "base/files.h"
#include "base/text.h"
#include "core/places.h"
#include "core/program.h"
#include "core/text_utility.h"
#include "platform/environment.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/form.h"
#include "protocol/pages.h"
#include "protocol/record_form.h"
#include "records/record_db.h"
#include "sync/requests.h"

namespace marovane {

namespace {

constexpr std::array<Stream, 3> kStreams{
    {{"ok", RecordTable::kOkSentence, "#", 6, "(下載正確句造句資料中)", "' 呼叫下載 oksentence 程序"},
     {"err", RecordTable::kErrSentence, "#", 6, "(下載錯誤句造句資料中)", "' 呼叫下載 errsentence 程序"},
     {"essay", RecordTable::kEssay, "||", 7, "(下載短文資料中)", "' 呼叫下載 essay 程序"}}};

constexpr const char* kRule = "'=========================================";
constexpr const char* kLineEnd = "\r\n";

std::string StoredDay(const std::string& told) {
  const auto day = base::ParseDate(base::Trim(told));
  if (!day) throw RunTimeError("the server tells a wrong date: " + told.substr(0, 40));
  return base::IsoDay(*day);
}

/// @param isFresh what the file held before goes
bool WriteLog(base::Files& files, const std::string& folder, const std::string& text, bool isFresh) {
  const std::string path = folder + "/debug.log";
  try {
    files.CreateFolder(folder, true);
    if (isFresh && files.FileExists(path)) files.Delete(path);
    files.Append(path, text);
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}

}  // namespace

// The ids of many sentences of one second would not sort. So they tell times of their own, a second for each
// round of the running number, and all before those of sentences to come.
Reload::Reload(Program& program, SyncRecords& records, Announce announce)
    : program_(program),
      records_(records),
      announce_(std::move(announce)),
      idTime_(program.machine.loop.Now() - std::chrono::hours{1}) {}

void Reload::Run() {
  records_.BeginReload();
  for (const Stream& stream : kStreams) {
    announce_(stream.detail);
    LoadStream(stream);
  }
  records_.CommitReload();
}

void Reload::LoadStream(const Stream& stream) {
  std::string lastId;
  while (lastId != "0") {
    const std::string reply = AskPage(stream, lastId);
    Log(stream, reply);
    program_.machine.loop.DoEvents();
    const StreamPage page = ReadStreamPage(stream, reply);
    if (!page.nextId) {
      Pause();
      continue;
    }
    std::vector<std::vector<std::string>> rows;
    for (const auto& fields : page.records) rows.push_back(RowOf(stream, fields));
    records_.AddToReload(stream.table, rows);
    program_.machine.loop.DoEvents();
    if (*page.nextId == lastId) throw RunTimeError("the server tells the same page again and again");
    lastId = *page.nextId;
  }
}

std::string Reload::AskPage(const Stream& stream, const std::string& lastId) {
  const auto& app = program_.app;
  return PostPage(program_, protocol::page::kSyncClient,
                  protocol::PlainBody({{"tp", stream.tp},
                                       {"pno", app.gAccountNo},
                                       {"frompno", app.gUploadAccountNo},
                                       {"lastid", lastId}}));
}

// A trace for whoever looks for a fault of the server; without it the records come all the same.
void Reload::Log(const Stream& stream, const std::string& reply) {
  const Environment& environment = program_.machine.environment;
  std::string text;
  for (const std::string& line :
       {std::string(kRule), std::string(stream.title), std::string(kRule), reply, std::string(kRule)}) {
    text += line + kLineEnd;
  }
  const bool isFresh = stream.table == RecordTable::kOkSentence;
  const std::string beside = environment.programFolder.string();
  if (WriteLog(program_.machine.files, beside, text, isFresh)) return;
  WriteLog(program_.machine.files, TraceFolder(environment), text, isFresh);
}

// Whatever the server has, ids and flags here have their forms.
std::vector<std::string> Reload::RowOf(const Stream& stream, const std::vector<std::string>& fields) {
  using namespace protocol;
  switch (stream.table) {
    case RecordTable::kOkSentence:
      return {NextId(),
              "N",
              fields[1],
              StoredDay(fields[2]),
              "Y",
              CleanRecordId(fields[3]),
              CleanRecordId(fields[4]),
              CleanFlag(fields[5], kPageFlags)};
    case RecordTable::kErrSentence:
      return {NextId(),
              fields[1],
              fields[0],
              StoredDay(fields[2]),
              "Y",
              CleanRecordId(fields[3]),
              CleanRecordId(fields[4]),
              CleanFlag(fields[5], kPageFlags)};
    default:
      return {
          CleanRecordId(fields[1]),           CleanRecordId(fields[2]), fields[4], fields[5], fields[6], "Y",
          CleanFlag(fields[3], kEssayStates), StoredDay(fields[0])};
  }
}

std::string Reload::NextId() {
  const int before = program_.app.gRecSeq;
  std::string id = MakeRecId(program_.app, idTime_);
  if (program_.app.gRecSeq > before) return id;
  idTime_ += std::chrono::seconds{1};
  program_.app.gRecSeq = 0;
  return MakeRecId(program_.app, idTime_);
}

// A server that breaks off does not get better by being asked at once.
void Reload::Pause() {
  constexpr int kPause = 1000;
  auto& loop = program_.machine.loop;
  Timer clock(loop, kPause);
  bool isOver = false;
  clock.onTick = [&isOver] { isOver = true; };
  clock.Enabled = true;
  loop.WaitUntil([&isOver] { return isOver; });
}

}  // namespace marovane
