// A sentence of an essay goes to the check engine; and how any judged sentence of an essay is recorded.
#include "base/cp950.h"
#include "base/day.h"
#include "base/files.h"
#include "base/text.h"
#include "base/transaction.h"
#include "core/engine_client.h"
#include "core/engine_exchange.h"
#include "core/process_control.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "core/typed_text.h"
#include "essay/archive.h"
#include "essay/walk_steps.h"
#include "platform/http.h"
#include "protocol/page_code.h"
#include "protocol/pages.h"
#include "records/record_db.h"

namespace marovane {

namespace essay_walk {
namespace {

// Is in the page of a sentence without mistakes; such a page is not worth filing.
constexpr std::string_view kNoMistake = "本句子沒有發現錯誤";

// Nobody asks here what the web engine makes of it.
constexpr const char* kEssayRunCode = "503181";

bool IsStopped(EssayContext& context) { return !HasItsWindow(context) || context.frmEssay->mStopRequested; }

EngineClient EngineFor(EssayContext& context) {
  return EngineClient(context.program, {.isStopped = [&context] { return IsStopped(context); }});
}

// Without an answer: the user has stopped the walk, the time was over, or the engine has refused.
void GiveUp(EssayContext& context, const EngineClient& engine) {
  const std::string& refusal = engine.Refusal();
  context.program.app.gProgressDetail = refusal;
  if (!IsStopped(context) && !engine.IsBrokenOff()) {
    AskInPlace(context, refusal.empty() ? Message::kEngineTimeout : Message::kRefusedByEngine);
  }
  context.program.app.gVerdict = "STOP";
}

// Files the page of a finding. gEssayPageChecksum says afterwards whether there is one.
void FilePage(EssayContext& context, const std::string& page) {
  auto& app = context.program.app;
  app.gEssayPageChecksum.clear();
  if (page.empty() || page.find(kNoMistake) != std::string::npos) return;
  app.gEssayPageChecksum = SendServerHtm(context.program, page, app.gEssayCurSentence);
}

std::string HaveHtm(const protocol::CheckReply& answer) {
  return base::Trim(answer.findMistake) == "1" ? "1" : "2";
}

void RecordAnswer(EssayContext& context, const protocol::CheckReply& answer, const std::string& haveHtm) {
  base::Transaction transaction(context.records.Db());
  if (answer.IsRight() || answer.findMistake == "2") {
    RecordPassed(context, haveHtm);
  } else {
    RecordRefused(context, answer.sentence, answer.errcode.empty() ? "0" : answer.errcode, haveHtm);
  }
  if (!answer.IsRight() && !answer.errcode.empty()) context.records.TallyMistake(answer.errcode);
  transaction.Commit();
}

// What is in the page's body. A page without one is all body.
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
  const base::HttpResponse response = program.machine.http.Send(
      {.method = "GET", .url = url, .headers = {}, .body = "", .limit = kReplyLimit});
  if (response.status != 200) return "";
  const bool isUtf8 = response.contentType.find("utf-8") != std::string::npos;
  return BodyOf(isUtf8 ? response.body : base::FromCp950(response.body));
} catch (const RunTimeError&) {
  return "";
}

void PassStringToEngineEssayWeb(EssayContext& context) {
  auto& app = context.program.app;
  const TypedSentence sentence(app.gEssayCurSentence);
  EngineClient engine = EngineFor(context);
  const auto reply = engine.AskWeb(protocol::page::kCheckSentence,
                                   protocol::EncodeCheck(app.gAccountNo, kEssayRunCode, sentence.Plain()));
  if (!reply) return GiveUp(context, engine);
  protocol::CheckReply answer = protocol::ParseCheckReply(*reply);
  answer.sentence = sentence.WithMarksOf(answer.sentence);
  const bool hasPage = !answer.pagePath.empty();
  context.showFreshPage = [&program = context.program, url = app.gWebEngineRoot + answer.pagePath] {
    program.hall.frmBrowser->GoNavigate(url, 2);
  };
  FilePage(context, hasPage ? FetchPage(context.program, app.gWebEngineRoot + answer.pagePath) : "");
  RecordAnswer(context, answer, app.gEssayPageChecksum.empty() ? "N" : HaveHtm(answer));
  SetVerdict(app.gVerdict, answer.findMistake);
}

bool RunEngine(EssayContext& context, EngineClient& engine) {
  Program& program = context.program;
  KillProcessByName(program.machine.processes, kEngineName, program.app.gEngineDir);
  WriteQuestion(program, TypedSentence(program.app.gEssayCurSentence).Plain());
  return engine.RunLocal(kEngineName, program.app.gEngineLevel + "," + context.frmEssay->mEngineRunCode,
                         [&program] { return HasResultPage(program); });
}

protocol::CheckReply ReadAnswer(Program& program) {
  protocol::CheckReply answer;
  answer.pagePath = ReadPagePath(program);
  RunInOrder(ReadAnswerSteps(program, answer));
  return answer;
}

std::string ReadAndDeletePage(Program& program, const std::string& path) {
  std::string page = ReadBig5File(program.machine.files, path);
  program.machine.files.Delete(path);
  return page;
}

void PassStringToEngineEssayLocal(EssayContext& context) {
  Program& program = context.program;
  auto& app = program.app;
  EngineClient engine = EngineFor(context);
  if (!RunEngine(context, engine)) return GiveUp(context, engine);
  protocol::CheckReply answer = ReadAnswer(program);
  answer.sentence = TypedSentence(app.gEssayCurSentence).WithMarksOf(answer.sentence);
  const bool hasPage = program.machine.files.FileExists(answer.pagePath);
  const std::string page = hasPage ? ReadAndDeletePage(program, answer.pagePath) : "";
  context.showFreshPage = [&program, code = protocol::EncodePage(page)] { PostDecodeForm(program, code); };
  FilePage(context, page);
  // Unlike with the web engine, the page of an error counts also when it was not filed.
  const bool counts = hasPage && (HaveHtm(answer) == "1" || !app.gEssayPageChecksum.empty());
  RecordAnswer(context, answer, counts ? HaveHtm(answer) : "N");
  SetVerdict(app.gVerdict, answer.findMistake);
}

}  // namespace

void PassStringToEngineEssay(EssayContext& context) {
  const EventLoop& loop = context.program.machine.loop;
  const int timesBefore = loop.TimesBrokenOff();
  if (context.program.app.gUseWebEngine) {
    PassStringToEngineEssayWeb(context);
  } else {
    PassStringToEngineEssayLocal(context);
  }
  if (loop.TimesBrokenOff() != timesBefore && HasItsWindow(context)) context.frmEssay->mStopRequested = true;
}

void RecordPassed(EssayContext& context, const std::string& haveHtm) {
  auto& app = context.program.app;
  context.records.InsertOkSentence({.sId = MakeRecId(context.program),
                                    .sentence = app.gEssayCurSentence,
                                    .sDate = base::DayOf(context.program.machine.loop.Now()),
                                    .essayId = app.gEssayId,
                                    .essaySId = app.gEssaySId,
                                    .haveHtm = haveHtm});
}

void RecordRefused(EssayContext& context, const std::string& sentence, const std::string& errcode,
                   const std::string& haveHtm) {
  auto& app = context.program.app;
  context.records.InsertErrSentence({.id = MakeRecId(context.program),
                                     .sentence = sentence,
                                     .errcode = errcode,
                                     .sDate = base::DayOf(context.program.machine.loop.Now()),
                                     .essayId = app.gEssayId,
                                     .essaySId = app.gEssaySId,
                                     .haveHtm = haveHtm});
}

}  // namespace essay_walk

}  // namespace marovane
