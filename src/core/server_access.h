// Requests to the server pages, their replies, the probes, the allotment of a web engine, and the addresses
// of pages that a browser shows.
#pragma once

#include <chrono>
#include <string>

#include "base/http.h"
#include "protocol/form.h"

namespace marovane {

struct Message;
struct Program;

/// A server that has not answered by then is not there.
inline constexpr std::chrono::milliseconds kProbeLimit{3000};
/// Nobody waits longer for the reply to a question.
inline constexpr std::chrono::milliseconds kReplyLimit{30000};

/// The request that posts a form body (UTF-8).
base::HttpRequest FormRequest(const std::string& url, const std::string& body,
                              std::chrono::milliseconds limit = kReplyLimit);
/// Posts a form body (UTF-8) and returns the reply as it came. Throws RunTimeError when none came.
base::HttpResponse SendForm(Program& program, const std::string& url, const std::string& body,
                            std::chrono::milliseconds limit = kReplyLimit);
/// The same, but returns the decoded reply, whatever the status. Throws RunTimeError when no
/// reply came or it cannot be decoded.
/// @param limit for the whole exchange
std::string PostForm(Program& program, const std::string& url, const std::string& body,
                     std::chrono::milliseconds limit = kReplyLimit);
/// The same with the fields of a body. Returns `refusal::kConnectFailed` instead of throwing, unless the
/// learner has broken off.
std::string TryPost(Program& program, const std::string& url, protocol::Fields fields,
                    std::chrono::milliseconds limit = kReplyLimit);
/// The same at a page of gServerUrlRoot, once a probe has found the server.
std::string AskServer(Program& program, const char* page, protocol::Fields fields = {});
/// The message that belongs to a refused login; nullptr for a word that has none.
const Message* LoginRefusal(const std::string& reply);
/// Shows the message that belongs to a refused login. False, and no message, for a word that has none.
/// @param noConnection the message for `refusal::kConnectFailed`
bool ShowLoginRefusal(Program& program, const std::string& reply, const Message& noConnection);

/// Probes gServerUrlRoot, and puts the server's date into gServerDate.
bool IsServerOnline(Program& program);
/// Probes gWebEngineRoot.
bool IsWebEngineOnline(Program& program, std::chrono::milliseconds limit = kProbeLimit);
/// Asks for an engine's root; "" when none is given. Throws RunTimeError for a failed transfer.
std::string GetWebEngineAddress(Program& program, const std::string& publisherRoot,
                                std::chrono::milliseconds limit = kProbeLimit);
/// Attempts of an allotment.
inline constexpr int kEngineAttempts = 10;
/// Asks for an engine's root into gWebEngineRoot, and whether the engine answers. Throws RunTimeError for a
/// failed transfer of the first request.
bool TryWebEngine(Program& program, std::chrono::milliseconds limit = kProbeLimit);

/// Has the browser window post a packed page to the server, whose answer it then shows.
void PostDecodeForm(Program& program, const std::string& code);

/// Address of the question of an assignment.
std::string QuestionUrl(const Program& program, const std::string& workId);
/// Address of the teacher's comment on what was handed in. Each call returns another one, so that no old copy
/// is shown.
std::string TeacherCommentUrl(Program& program, const std::string& workId);

}  // namespace marovane
