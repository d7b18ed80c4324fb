#include "essay/engine_passes.h"

#include <optional>

#include "base/cp950.h"
#include "base/day.h"
#include "base/files.h"
#include "base/text.h"
#include "base/transaction.h"
#include "core/big5_file.h"
#include "core/engine_exchange.h"
#include "core/message.h"
#include "core/process_control.h"
#include "core/server_access.h"
#include "core/set_file.h"
#include "core/text_utility.h"
#include "essay/archive.h"
#include "essay/room.h"
#include "platform/http.h"
#include "records/record_db.h"

namespace {

// Stands in the page of a sentence without mistakes; such a page is not worth filing.
constexpr std::string_view kNoMistake = "本句子沒有發現錯誤";

// Nobody asks here what the web engine makes of it.
constexpr const char* kEssayRunCode = "503181";

void TellTimeout(EssayRoom& room) {
  room.frmEssay->tmrEngineResponse.Enabled = false;
  room.frmEssay->Left = kAway;
  ShowMessage(room.program, Message::kEngineTimeout);
}

void StartClock(EssayRoom& room) {
  room.frmEssay->mEngineWaitSeconds = 0;
  room.frmEssay->tmrEngineResponse.Enabled = true;
}

// Files the page of a finding. gEssayPageChecksum tells afterwards whether there is one.
void FilePage(EssayRoom& room, const std::string& page) {
  auto& app = room.program.app;
  app.gEssayPageChecksum.clear();
  if (page.empty() || page.find(kNoMistake) != std::string::npos) return;
  app.gEssayPageChecksum = SendServerHtm(room.program, page, app.gEssayCurSentence);
}

std::string HaveHtm(const EngineAnswer& answer) { return base::Trim(answer.findMistake) == "1" ? "1" : "2"; }

void RecordAnswer(EssayRoom& room, const EngineAnswer& answer, const std::string& haveHtm) {
  auto& app = room.program.app;
  const base::LocalTime now = room.program.machine.loop.Now();
  const std::string id = MakeRecId(app, now);
  base::Transaction transaction(room.records.Db());
  if (answer.IsRight() || answer.findMistake == "2") {
    room.records.InsertOkSentence({.sId = id,
                                   .sentence = app.gEssayCurSentence,
                                   .sDate = base::DayOf(now),
                                   .essayId = app.gEssayId,
                                   .essaySId = app.gEssaySId,
                                   .haveHtm = haveHtm});
  } else {
    room.records.InsertErrSentence({.id = id,
                                    .sentence = answer.sentence,
                                    .errcode = answer.errcode.empty() ? "0" : answer.errcode,
                                    .sDate = base::DayOf(now),
                                    .essayId = app.gEssayId,
                                    .essaySId = app.gEssaySId,
                                    .haveHtm = haveHtm});
  }
  if (!answer.IsRight() && !answer.errcode.empty()) room.records.TallyMistake(answer.errcode);
  transaction.Commit();
}

// A transfer that breaks is no answer, like a reply that is none.
std::optional<EngineAnswer> AskWebEngine(Program& program) try {
  const auto& app = program.app;
  if (!IsWebEngineOnline(program, false)) return std::nullopt;
  return ParseEngineReply(PostForm(program, app.gWebEngineRoot + "p_passWebEngine.asp",
                                   EngineRequestBody(app.gAccountNo, kEssayRunCode, app.gEssayCurSentence)));
} catch (const RunTimeError&) {
  return std::nullopt;
}

// Lets a second of the clock go by, or less when the user stops the walk.
void WaitForNextTry(EssayRoom& room) {
  const int seconds = room.frmEssay->mEngineWaitSeconds;
  room.program.machine.loop.WaitUntil([&room, seconds] {
    return room.frmEssay->mStopRequested || room.frmEssay->mEngineWaitSeconds != seconds;
  });
}

std::optional<EngineAnswer> AskUntilAnswered(EssayRoom& room) {
  StartClock(room);
  while (!room.frmEssay->mStopRequested) {
    auto answer = AskWebEngine(room.program);
    if (room.frmEssay->mStopRequested) break;
    if (answer) return answer;
    if (room.frmEssay->mEngineWaitSeconds >= kEngineTimeout) {
      TellTimeout(room);
      break;
    }
    WaitForNextTry(room);
  }
  return std::nullopt;
}

// What stands in the page's body. A page without one is all body.
std::string BodyOf(const std::string& page) {
  const std::string lower = base::Lower(page);
  const auto tag = lower.find("<body");
  const auto begin = tag == std::string::npos ? tag : lower.find('>', tag);
  if (begin == std::string::npos) return page;
  const auto end = lower.rfind("</body");
  const bool isClosed = end != std::string::npos && end > begin;
  return page.substr(begin + 1, isClosed ? end - begin - 1 : std::string::npos);
}

// "" when the page cannot be had.
std::string FetchPage(Program& program, const std::string& url) try {
  const base::HttpResponse response =
      program.machine.http.Send({.method = "GET", .url = url, .headers = {}, .body = ""});
  if (response.status != 200) return "";
  const bool isUtf8 = response.contentType.find("utf-8") != std::string::npos;
  return BodyOf(isUtf8 ? response.body : base::FromCp950(response.body));
} catch (const RunTimeError&) {
  return "";
}

void PassStringToEngineEssayWeb(EssayRoom& room) {
  auto& app = room.program.app;
  const auto answer = AskUntilAnswered(room);
  if (!answer) {
    app.gVerdict = "STOP";
    return;
  }
  const bool hasPage = !answer->pagePath.empty();
  FilePage(room, hasPage ? FetchPage(room.program, app.gWebEngineRoot + answer->pagePath) : "");
  RecordAnswer(room, *answer, app.gEssayPageChecksum.empty() ? "N" : HaveHtm(*answer));
  SetVerdict(app.gVerdict, answer->findMistake);
}

void LaunchLocalEngine(EssayRoom& room) {
  Program& program = room.program;
  const auto& app = program.app;
  KillProcessByName(program.machine.processes, kEngineName);
  ResetRegistrySet(program.machine.files, app.gRegistryFile, "RESET");
  ReadWriteSetFile(program.machine.files, app.gRegistryFile, "W", "sentence", app.gEssayCurSentence);
  SettleDown(program.machine.loop, room.frmEssay->mEngineWaitSeconds);
  StartHelper(program, app.gEngineDir, kEngineName, {app.gEngineLevel + "," + room.frmEssay->mEngineRunCode});
}

// False when there is none, because the user stopped the walk or the time is over.
bool WaitForLocalEngine(EssayRoom& room) {
  StartClock(room);
  bool isDone = false;
  room.program.machine.loop.WaitUntil([&] {
    isDone = HasEngineFinished(room.program);
    return isDone || room.frmEssay->mStopRequested || room.frmEssay->mEngineWaitSeconds >= kEngineTimeout;
  });
  room.frmEssay->tmrEngineResponse.Enabled = false;
  if (!isDone && !room.frmEssay->mStopRequested) TellTimeout(room);
  return isDone && !room.frmEssay->mStopRequested;
}

EngineAnswer ReadLocalAnswer(Program& program) {
  EngineAnswer answer;
  answer.pagePath = ReadExchangeKey(program, "htm4chk");
  answer.findMistake = ReadExchangeKey(program, "findMistake");
  answer.errcode = EngineReplyCode(ReadExchangeKey(program, "errcode"));
  answer.sentence = ReadExchangeKey(program, "sentence");
  return answer;
}

std::string TakePageFile(Program& program, const std::string& path) {
  std::string page = ReadBig5File(program.machine.files, path);
  program.machine.files.Delete(path);
  return page;
}

void PassStringToEngineEssayLocal(EssayRoom& room) {
  Program& program = room.program;
  auto& app = program.app;
  LaunchLocalEngine(room);
  if (!WaitForLocalEngine(room)) {
    app.gVerdict = "STOP";
    return;
  }
  const EngineAnswer answer = ReadLocalAnswer(program);
  const bool hasPage = program.machine.files.FileExists(answer.pagePath);
  FilePage(room, hasPage ? TakePageFile(program, answer.pagePath) : "");
  // Unlike with the web engine, the page of an error counts also when it was not filed.
  const bool counts = hasPage && (HaveHtm(answer) == "1" || !app.gEssayPageChecksum.empty());
  RecordAnswer(room, answer, counts ? HaveHtm(answer) : "N");
  SetVerdict(app.gVerdict, answer.findMistake);
}

}  // namespace

void PassStringToEngineEssay(EssayRoom& room) {
  if (room.program.app.gUseWebEngine) {
    PassStringToEngineEssayWeb(room);
  } else {
    PassStringToEngineEssayLocal(room);
  }
}
