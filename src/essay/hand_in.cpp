#include "essay/hand_in.h"

#include <fmt/format.h>

#include "core/program.h"
#include "core/server_access.h"
#include "platform/run_time_error.h"

std::string SubmitEssayFinal(Program& program, const std::string& account, const std::string& essayId,
                             const std::string& workId) {
  try {
    return PostForm(program, program.app.gServerUrlRoot + "p_set_essay_work_finalset.asp",
                    fmt::format("{}&pno={}&essayId={}&workId={}", kAccessKey, account, essayId, workId));
  } catch (const RunTimeError&) {
    return "";
  }
}
