#include "essay/hand_in.h"

#include <fmt/format.h>

#include "core/program.h"
#include "core/server_access.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"

namespace marovane {

namespace {

bool SubmitEssayFinal(Program& program, const std::string& essayId, const std::string& workId) try {
  const auto& app = program.app;
  const std::string reply =
      PostForm(program, app.gServerUrlRoot + "p_set_essay_work_finalset.asp",
               fmt::format("{}&pno={}&essayId={}&workId={}", kAccessKey, app.gAccountNo, essayId, workId));
  return reply.starts_with("OK");
} catch (const RunTimeError&) {
  return false;
}

}  // namespace

bool TryRepeatedly(Program& program, int tries, const std::function<bool()>& attempt) {
  for (int i = 0; i < tries; ++i) {
    if (i > 0) program.machine.loop.Wait(kPauseBetweenTries);
    if (attempt()) return true;
  }
  return false;
}

bool SubmitEssay(Program& program, const std::string& essayId, const std::string& workId, int tries) {
  return TryRepeatedly(program, tries, [&] { return SubmitEssayFinal(program, essayId, workId); });
}

}  // namespace marovane
