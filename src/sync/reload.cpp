#include "sync/reload.h"

#include <fmt/format.h>

#include <array>

#include "base/files.h"
#include "core/data_paths.h"
#include "core/program.h"
#include "core/text_utility.h"
#include "platform/environment.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/form.h"
#include "protocol/pages.h"
#include "records/record_db.h"
#include "sync/requests.h"

namespace marovane {

using protocol::RecordKind;

namespace {

struct Stream {
  RecordKind kind;
  const char* detail;  // for the progress box
  const char* title;   // for `debug.log`
};
constexpr std::array<Stream, 3> kStreams{
    {{RecordKind::kRight, "(下載正確句造句資料中)", "' 呼叫下載 oksentence 程序"},
     {RecordKind::kFaulty, "(下載錯誤句造句資料中)", "' 呼叫下載 errsentence 程序"},
     {RecordKind::kEssay, "(下載短文資料中)", "' 呼叫下載 essay 程序"}}};

constexpr const char* kRule = "'=========================================";

/// @param isFresh the file is begun anew
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

// The ids of many sentences of one second would not sort. So they have times of their own, a second for each
// round of the running number, all before those of sentences to come.
Reload::Reload(Program& program, SyncRecords& records, Announce announce)
    : program_(program),
      records_(records),
      announce_(std::move(announce)),
      idTime_(program.machine.loop.Now() - std::chrono::hours{1}) {}

void Reload::Run() {
  timesBrokenOff_ = program_.machine.loop.TimesBrokenOff();
  records_.BeginReload();
  for (const Stream& stream : kStreams) {
    announce_(stream.detail);
    LoadStream(stream.kind, stream.title);
  }
  records_.CommitReload();
}

void Reload::LoadStream(RecordKind kind, const char* title) {
  EventLoop& loop = program_.machine.loop;
  constexpr std::chrono::seconds kPatience{60};
  auto end = loop.Elapsed() + kPatience;
  std::string lastId;
  while (lastId != protocol::kNoMore) {
    const std::string reply = AskPage(kind, lastId);
    Log(title, reply, kind == kStreams[0].kind);
    LetEventsIn();
    const auto page = protocol::ParseStreamPage(kind, reply);
    if (!page.nextId) {
      if (loop.Elapsed() >= end) throw RunTimeError("the server does not send its records");
      // A server that breaks off does not get better by being asked at once.
      loop.WaitUntil([this] { return IsBrokenOff(); }, std::chrono::seconds{1});
      LetEventsIn();
      continue;
    }
    end = loop.Elapsed() + kPatience;
    records_.AddToReload(kind, IdsFor(page.rows), page.rows);
    LetEventsIn();
    if (*page.nextId == lastId) throw RunTimeError("the server tells the same page again and again");
    lastId = *page.nextId;
  }
}

bool Reload::IsBrokenOff() const { return program_.machine.loop.TimesBrokenOff() != timesBrokenOff_; }

void Reload::LetEventsIn() {
  program_.machine.loop.DoEvents();
  if (IsBrokenOff()) throw BrokenOff("reload");
}

std::string Reload::AskPage(RecordKind kind, const std::string& lastId) {
  const auto& app = program_.app;
  return PostPage(program_, protocol::page::kSyncClient,
                  protocol::PlainBody({{"tp", protocol::StreamName(kind)},
                                       {"pno", app.gAccountNo},
                                       {"frompno", app.gUploadAccountNo},
                                       {"lastid", lastId}}));
}

// A trace for those who look for a fault of the server; without it the records come all the same.
void Reload::Log(const char* title, const std::string& reply, bool isFresh) {
  const Environment& environment = program_.machine.environment;
  const std::string text = fmt::format("{0}\r\n{1}\r\n{0}\r\n{2}\r\n{0}\r\n", kRule, title, reply);
  const std::string beside = environment.programFolder.string();
  if (WriteLog(program_.machine.files, beside, text, isFresh)) return;
  WriteLog(program_.machine.files, TraceFolder(environment), text, isFresh);
}

std::vector<std::string> Reload::IdsFor(const std::vector<protocol::Row>& rows) {
  std::vector<std::string> ids(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (std::holds_alternative<protocol::SentenceRow>(rows[i])) ids[i] = NextId();
  }
  return ids;
}

std::string Reload::NextId() {
  const int before = program_.app.gRecSeq;
  std::string id = MakeRecId(program_.app, idTime_);
  if (program_.app.gRecSeq > before) return id;
  idTime_ += std::chrono::seconds{1};
  program_.app.gRecSeq = 0;
  return MakeRecId(program_.app, idTime_);
}

}  // namespace marovane
