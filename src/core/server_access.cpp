#include "core/server_access.h"

#include <utility>

#include "base/cp950.h"
#include "base/day.h"
#include "base/html.h"
#include "base/text.h"
#include "core/message.h"
#include "core/program.h"
#include "core/text_utility.h"
#include "platform/event_loop.h"
#include "platform/http.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"

namespace marovane {

base::HttpRequest FormRequest(const std::string& url, const std::string& body,
                              std::chrono::milliseconds limit) {
  base::HttpRequest request{.url = url, .headers = {}, .body = body, .limit = limit};
  // Servers of this family are used to both, in this order.
  request.headers.emplace_back("Content-Type", protocol::kFormType);
  request.headers.emplace_back("Content-Type", "text/xml; charset=big5");
  return request;
}

base::HttpResponse SendForm(Program& program, const std::string& url, const std::string& body,
                            std::chrono::milliseconds limit) {
  return program.machine.http.Send(FormRequest(url, body, limit));
}

std::string PostForm(Program& program, const std::string& url, const std::string& body,
                     std::chrono::milliseconds limit) {
  return base::FromCp950(SendForm(program, url, body, limit).body);
}

std::string TryPost(Program& program, const std::string& url, protocol::Fields fields,
                    std::chrono::milliseconds limit) try {
  return PostForm(program, url, protocol::PlainBody(fields), limit);
} catch (const BrokenOff&) {
  throw;
} catch (const RunTimeError&) {
  return protocol::refusal::kConnectFailed;
}

std::string AskServer(Program& program, const char* page, protocol::Fields fields) {
  if (!IsServerOnline(program)) return protocol::refusal::kConnectFailed;
  return TryPost(program, program.app.gServerUrlRoot + page, fields);
}

const Message* LoginRefusal(const std::string& reply) {
  using namespace protocol::refusal;
  for (const auto& [word, message] : {std::pair{kNotFound, &Message::kWrongAccount},
                                      {kBadAccount, &Message::kWrongAccount},
                                      {kWrongPassword, &Message::kWrongPassword},
                                      {kTryLater, &Message::kTryLater},
                                      {kBadText, &Message::kBadLoginText},
                                      {kTooLong, &Message::kBadLoginText}}) {
    if (reply == word) return message;
  }
  return nullptr;
}

bool ShowLoginRefusal(Program& program, const std::string& reply, const Message& noConnection) {
  const Message* const message =
      reply == protocol::refusal::kConnectFailed ? &noConnection : LoginRefusal(reply);
  if (message != nullptr) ShowMessage(program, *message);
  return message != nullptr;
}

namespace {

bool IsOnline(const std::string& reply) { return reply.starts_with("ONLINE"); }

}  // namespace

bool IsServerOnline(Program& program) {
  const std::string reply =
      TryPost(program, program.app.gServerUrlRoot + protocol::page::kServerProbe, {}, kProbeLimit);
  if (!IsOnline(reply)) return false;
  constexpr int kDateFrom = 8;
  if (const auto day = base::ParseDate(base::Trim(base::Mid(reply, kDateFrom))))
    program.app.gServerDate = *day;
  return true;
}

bool IsWebEngineOnline(Program& program, std::chrono::milliseconds limit) {
  return IsOnline(TryPost(program, program.app.gWebEngineRoot + protocol::page::kEngineProbe, {}, limit));
}

std::string GetWebEngineAddress(Program& program, const std::string& publisherRoot,
                                std::chrono::milliseconds limit) {
  const std::string reply =
      PostForm(program, publisherRoot + protocol::page::kEngineAddress, protocol::PlainBody(), limit);
  return reply.starts_with("OK") ? base::Trim(base::Replace(reply, "OK_", "")) : "";
}

bool TryWebEngine(Program& program, std::chrono::milliseconds limit) {
  program.app.gWebEngineRoot = GetWebEngineAddress(program, program.app.gPublisherRoot, limit);
  return !program.app.gWebEngineRoot.empty() && IsWebEngineOnline(program, limit);
}

void PostDecodeForm(Program& program, const std::string& code) {
  const base::Html page = base::Fill(
      "<html>\r\n<head>\r\n<meta http-equiv='Content-Language' content='zh-tw'>\r\n"
      "<meta http-equiv='Content-Type' content='text/html; charset=big5'>\r\n<title></title>\r\n</head>\r\n"
      "<body>\r\n<form name='frmPost' method='POST' action='{}{}'>\r\n"
      "<input type='HIDDEN' name='key' value='{}'>\r\n"
      "<input type='HIDDEN' name='pno' value='{}'>\r\n<input type='HIDDEN' name='code' value='{}'>\r\n"
      "</body>\r\n</html>\r\n",
      program.app.gServerUrlRoot, protocol::page::kShowPackedPage, protocol::kAccessKey,
      program.app.gAccountNo, code);
  program.hall.frmBrowser->GoPostPage(page, 2);
}

std::string QuestionUrl(const Program& program, const std::string& workId) {
  const auto& app = program.app;
  return app.gServerUrlRoot + protocol::page::kWork + "?" +
         protocol::PlainBody({{"pno", app.gAccountNo},
                              {"workId", workId},
                              {"mode", "GETHTM"},
                              {"cpno", app.gTeacherAccount}});
}

std::string TeacherCommentUrl(Program& program, const std::string& workId) {
  auto& app = program.app;
  return app.gServerUrlRoot + protocol::page::kTeacherComment + "?tid=" + MakeRecId(program) + "&" +
         protocol::PlainBody({{"pno", app.gAccountNo}, {"workId", workId}});
}

}  // namespace marovane
