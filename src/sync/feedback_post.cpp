#include "sync/feedback_post.h"

#include "core/program.h"
#include "core/text_utility.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/headers.h"
#include "protocol/pages.h"
#include "sync/outbox.h"
#include "sync/requests.h"

namespace marovane {

namespace {

constexpr const char* kFeedbackEnding = ".feedback";

// Servers may answer what they like, but after a refusal they do not have it.
bool HasArrived(Program& program, const std::string& body) {
  try {
    return !PostPage(program, protocol::page::kFeedback, body, protocol::kFormType, {}).starts_with("ERR");
  } catch (const RunTimeError&) {
    return false;
  }
}

}  // namespace

bool SendFeedback(Program& program, const std::string& body) {
  if (HasArrived(program, body)) return true;
  base::Files& files = program.machine.files;
  const auto folder = OutboxFolder(program);
  files.CreateFolder(folder, true);
  const std::string name = MakeRecId(program.app, program.machine.loop.Now()) + kFeedbackEnding;
  base::RewriteFile(files, folder / name, body, true);
  return false;
}

void SendWaitingFeedback(Program& program) {
  base::Files& files = program.machine.files;
  const auto folder = OutboxFolder(program);
  const int timesBefore = program.machine.loop.TimesBrokenOff();
  for (const auto& name : files.List(folder)) {
    if (!name.ends_with(kFeedbackEnding)) continue;
    try {
      if (HasArrived(program, files.Read(folder / name))) files.Delete(folder / name);
    } catch (const RunTimeError&) {
      // The records need not wait for it.
    }
    if (program.machine.loop.TimesBrokenOff() != timesBefore) throw BrokenOff("feedback");
  }
}

}  // namespace marovane
