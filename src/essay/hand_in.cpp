#include "essay/hand_in.h"

#include <chrono>

#include "core/program.h"
#include "platform/event_loop.h"
#include "platform/machine.h"
#include "platform/run_time_error.h"
#include "protocol/pages.h"

namespace marovane {

bool PauseBetweenTries(Program& program, const std::function<bool()>& isOver) {
  EventLoop& loop = program.machine.loop;
  const int timesBefore = loop.TimesBrokenOff();
  const auto isBrokenOff = [&] { return loop.TimesBrokenOff() != timesBefore; };
  const bool isCutShort = loop.WaitUntil([&] { return isBrokenOff() || isOver(); }, std::chrono::seconds{3});
  if (isBrokenOff()) throw BrokenOff("pause between tries");
  return !isCutShort;
}

bool TryRepeatedly(Program& program, int tries, const std::function<bool()>& attempt,
                   const std::function<bool()>& isOver) {
  const EventLoop& loop = program.machine.loop;
  const int timesBefore = loop.TimesBrokenOff();
  for (int i = 0; i < tries; ++i) {
    if (i > 0 && !PauseBetweenTries(program, isOver)) return false;
    if (attempt()) return true;
    if (loop.TimesBrokenOff() != timesBefore) throw BrokenOff("tries");
  }
  return false;
}

bool SubmitEssay(Program& program, const std::string& essayId, const std::string& workId, int tries,
                 const std::function<bool()>& isOver) {
  const auto& app = program.app;
  const auto attempt = [&] {
    return program.proof
        .Ask(protocol::page::kHandInEssay,
             {{"pno", app.gAccountNo}, {"essayId", essayId}, {"workId", workId}})
        .starts_with("OK");
  };
  const bool isHandedIn = TryRepeatedly(program, tries, attempt, isOver);
  if (!isHandedIn && !isOver()) program.proof.TellRefusal();
  return isHandedIn;
}

}  // namespace marovane
