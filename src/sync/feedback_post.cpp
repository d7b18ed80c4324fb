#include "sync/feedback_post.h"

#include "core/program.h"
#include "core/server_access.h"
#include "core/text_utility.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/account.h"
#include "protocol/form.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "protocol/refusal.h"
#include "sync/outbox.h"
#include "sync/requests.h"

namespace marovane {

namespace {

constexpr const char* kFeedbackEnding = ".feedback";

// The account of whoever has written it; "" for none.
std::string WriterOf(const std::string& body) {
  return protocol::CleanAccount(protocol::Form::Browser(body).Find("pno").value_or(""));
}

// Servers may answer what they like, but after a refusal they do not have it.
FeedbackFate PostFeedback(Program& program, const std::string& body) {
  try {
    const std::string reply = PostPage(program, protocol::page::kFeedback, body, protocol::kFormType, {});
    if (!reply.starts_with("ERR")) return FeedbackFate::kArrived;
    // Nobody can log in for a learner without an account.
    const bool isNobodys = reply == protocol::refusal::kLogin && WriterOf(body).empty();
    return isNobodys || protocol::refusal::IsFinal(reply) ? FeedbackFate::kRefused : FeedbackFate::kKept;
  } catch (const RunTimeError&) {
    return FeedbackFate::kKept;
  }
}

void PostKept(Program& program, const std::string& name) {
  base::Files& files = program.machine.files;
  const auto folder = OutboxFolder(program);
  const std::string body = files.Read(folder / name);
  const std::string writer = WriterOf(body);
  // What another one has written waits for that one.
  if (!writer.empty() && writer != protocol::CleanAccount(program.app.gAccountNo)) return;
  const FeedbackFate fate = PostFeedback(program, body);
  if (fate == FeedbackFate::kArrived) files.Delete(folder / name);
  if (fate != FeedbackFate::kRefused) return;
  files.CreateFolder(folder / "refused", true);
  files.Rename(folder / name, folder / "refused" / name);
}

}  // namespace

FeedbackFate SendFeedback(Program& program, const std::string& body) {
  const FeedbackFate fate = PostFeedback(program, body);
  if (fate != FeedbackFate::kKept) return fate;
  base::Files& files = program.machine.files;
  const auto folder = OutboxFolder(program);
  files.CreateFolder(folder, true);
  base::RewriteFile(files, folder / (MakeRecId(program) + kFeedbackEnding), body, true);
  return fate;
}

void SendWaitingFeedback(Program& program) {
  auto names = program.machine.files.List(OutboxFolder(program));
  std::erase_if(names, [](const std::string& name) { return !name.ends_with(kFeedbackEnding); });
  // The login page of a network would answer everything.
  if (names.empty() || !IsServerOnline(program)) return;
  const int timesBefore = program.machine.loop.TimesBrokenOff();
  for (const auto& name : names) {
    try {
      PostKept(program, name);
    } catch (const RunTimeError&) {
      // The records need not wait for it.
    }
    if (program.machine.loop.TimesBrokenOff() != timesBefore) throw BrokenOff("feedback");
  }
}

}  // namespace marovane
