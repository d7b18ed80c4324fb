// Handing an essay in as the answer to a teacher's assignment, and the tries that it takes over a bad
// network.
#pragma once

#include <functional>
#include <string>

namespace marovane {

struct Program;

/// Lets the time between two tries go by.
/// @param isOver ends it early: whoever wanted the tries may have gone
/// @return whether it went by to the end. Throws BrokenOff when the learner breaks off.
bool PauseBetweenTries(Program& program, const std::function<bool()>& isOver);

/// Makes so many tries, with a pause between.
/// @param isOver as for PauseBetweenTries
/// @return false when all of them have failed, or it was over before. Throws BrokenOff when the learner
/// breaks off.
bool TryRepeatedly(Program& program, int tries, const std::function<bool()>& attempt,
                   const std::function<bool()>& isOver);

/// Tells the server that an essay is the answer to an assignment, in so many tries.
/// @param isOver as for TryRepeatedly
/// @return false when it has not accepted it. Throws BrokenOff when the learner breaks off.
bool SubmitEssay(
    Program& program, const std::string& essayId, const std::string& workId, int tries,
    const std::function<bool()>& isOver = [] { return false; });

}  // namespace marovane
