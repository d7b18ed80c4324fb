#include "essay/hand_in.h"

#include <fmt/format.h>

#include "core/program.h"
#include "core/server_access.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "platform/timer.h"

std::string SubmitEssayFinal(Program& program, const std::string& account, const std::string& essayId,
                             const std::string& workId) {
  try {
    return PostForm(program, program.app.gServerUrlRoot + "p_set_essay_work_finalset.asp",
                    fmt::format("{}&pno={}&essayId={}&workId={}", kAccessKey, account, essayId, workId));
  } catch (const RunTimeError&) {
    return "";
  }
}

bool SubmitUntilTaken(Program& program, const std::string& essayId, const std::string& workId, int tries) {
  constexpr int kPause = 3;
  for (int i = 0; i < tries; ++i) {
    if (i > 0) WaitSeconds(program, kPause);
    if (SubmitEssayFinal(program, program.app.gAccountNo, essayId, workId).starts_with("OK")) return true;
  }
  return false;
}

void WaitSeconds(Program& program, int seconds) {
  Timer tmrWait(program.machine.loop, 1000);
  int ticks = 0;
  tmrWait.onTick = [&ticks] { ++ticks; };
  tmrWait.Enabled = true;
  program.machine.loop.WaitUntil([&] { return ticks >= seconds; });
}
