#include "essay/hand_in.h"

#include "core/program.h"
#include "core/server_access.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "protocol/pages.h"

namespace marovane {

bool TryRepeatedly(Program& program, int tries, const std::function<bool()>& attempt,
                   const std::function<bool()>& isOver) {
  for (int i = 0; i < tries; ++i) {
    if (i > 0 && program.machine.loop.WaitUntil(isOver, kPauseBetweenTries)) return false;
    if (attempt()) return true;
  }
  return false;
}

bool SubmitEssay(Program& program, const std::string& essayId, const std::string& workId, int tries,
                 const std::function<bool()>& isOver) {
  const auto& app = program.app;
  const auto attempt = [&] {
    return TryPost(program, app.gServerUrlRoot + protocol::page::kHandInEssay,
                   {{"pno", app.gAccountNo}, {"essayId", essayId}, {"workId", workId}})
        .starts_with("OK");
  };
  return TryRepeatedly(program, tries, attempt, isOver);
}

}  // namespace marovane
