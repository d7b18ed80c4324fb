#include "sync/reload.h"

#include <fmt/format.h>

#include <array>

#include "base/files.h"
#include "core/data_paths.h"
#include "core/program.h"
#include "core/provisioning.h"
#include "core/text_utility.h"
#include "platform/environment.h"
#include "platform/machine.h"
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

Reload::Reload(Program& program, SyncRecords& records, const ReloadRules& rules, Announce announce)
    : program_(program), records_(records), rules_(rules), announce_(std::move(announce)) {}

std::optional<TakenAway> Reload::Run() {
  timesBrokenOff_ = program_.machine.loop.TimesBrokenOff();
  records_.BeginReload();
  for (const Stream& stream : kStreams) {
    announce_(stream.detail);
    LoadRows(stream.kind, stream.title);
  }
  if (rules_.hasIds) LoadGone();
  TakenAway taken = KeepCopy();
  if (records_.CommitReload(rules_)) return taken;
  RemoveCopy(taken);
  return std::nullopt;
}

TakenAway Reload::KeepCopy() {
  TakenAway taken{.rows = records_.CountTakenAway(rules_), .copy = ""};
  if (taken.rows == 0) return taken;
  taken.copy = AsidePath(program_, "Marovane.mdb");
  try {
    records_.CopyTo(taken.copy);
  } catch (const RunTimeError&) {
    RemoveCopy(taken);  // half of one, and the next try would leave another
    throw;
  }
  return taken;
}

void Reload::RemoveCopy(const TakenAway& taken) {
  base::Files& files = program_.machine.files;
  if (!taken.copy.empty() && files.FileExists(taken.copy)) files.Delete(taken.copy);
}

void Reload::LoadRows(RecordKind kind, const char* title) {
  LoadStream(protocol::StreamName(kind), [&](const std::string& reply) {
    Log(title, reply, kind == kStreams[0].kind);
    LetEventsIn();
    auto page = protocol::ParseStreamPage(kind, reply);
    if (!page.nextId) return page.nextId;  // half a page: it comes again
    GiveIds(page.rows);
    records_.AddToReload(kind, page.rows);
    return page.nextId;
  });
}

void Reload::LoadGone() {
  LoadStream(protocol::kGoneStream, [this](const std::string& reply) {
    const auto page = protocol::ParseGonePage(reply);
    if (page.nextId) records_.AddGone(page.ids);
    return page.nextId;
  });
}

void Reload::LoadStream(const char* name, const AddPage& add) {
  EventLoop& loop = program_.machine.loop;
  constexpr std::chrono::seconds kPatience{60};
  auto end = loop.Elapsed() + kPatience;
  std::string lastId;
  while (lastId != protocol::kNoMore) {
    const auto nextId = add(AskPage(name, lastId));
    LetEventsIn();
    if (!nextId) {
      if (loop.Elapsed() >= end) throw RunTimeError("the server does not send its records");
      // A server that breaks off does not get better by being asked at once.
      loop.WaitUntil([this] { return IsBrokenOff(); }, std::chrono::seconds{1});
      LetEventsIn();
      continue;
    }
    end = loop.Elapsed() + kPatience;
    if (*nextId == lastId) throw RunTimeError("the server tells the same page again and again");
    lastId = *nextId;
  }
}

bool Reload::IsBrokenOff() const { return program_.machine.loop.TimesBrokenOff() != timesBrokenOff_; }

void Reload::LetEventsIn() {
  program_.machine.loop.DoEvents();
  if (IsBrokenOff()) throw BrokenOff("reload");
}

std::string Reload::AskPage(const char* stream, const std::string& lastId) {
  const auto& app = program_.app;
  std::string body = protocol::PlainBody(
      {{"tp", stream}, {"pno", app.gAccountNo}, {"frompno", app.gUploadAccountNo}, {"lastid", lastId}});
  if (rules_.hasIds) body += fmt::format("&ids=1&{}={}", protocol::kRowsField, protocol::kMostRowsOfPage);
  std::string reply = PostPage(program_, protocol::page::kSyncClient, body, Headers{}, app.gUploadAccountNo);
  if (reply.starts_with("ERR_")) throw StreamRefused(reply);
  return reply;
}

// A trace for those who look for a fault of the server; without it the records come all the same.
void Reload::Log(const char* title, const std::string& reply, bool isFresh) {
  const Environment& environment = program_.machine.environment;
  const std::string text = fmt::format("{0}\r\n{1}\r\n{0}\r\n{2}\r\n{0}\r\n", kRule, title, reply);
  const std::string beside = environment.programFolder.string();
  if (WriteLog(program_.machine.files, beside, text, isFresh)) return;
  WriteLog(program_.machine.files, TraceFolder(environment), text, isFresh);
}

// Essays have their own. What this computer makes up for rows of a server that tells no ids must not look
// like an id that a server may know: it is one digit shorter.
void Reload::GiveIds(std::vector<protocol::StreamRow>& rows) {
  for (auto& [row, id] : rows) {
    if (!id.empty() || std::holds_alternative<protocol::EssayRow>(row)) continue;
    id = MakeRecId(program_);
    id.pop_back();
  }
}

}  // namespace marovane
