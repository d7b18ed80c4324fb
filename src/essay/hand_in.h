// Handing an essay in as the answer to a teacher's assignment, and the tries that it takes over a bad
// network.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace marovane {

struct Program;

/// Time between tries.
inline constexpr std::chrono::seconds kPauseBetweenTries{3};

/// Makes so many tries, with a pause between.
/// @param isOver asked between the tries: whoever wanted them may have gone
/// @return false when all of them have failed, or it was over before
bool TryRepeatedly(Program& program, int tries, const std::function<bool()>& attempt,
                   const std::function<bool()>& isOver);

/// Tells the server that an essay is the answer to an assignment, in so many tries.
/// @param isOver as for TryRepeatedly
/// @return false when it has not accepted it
bool SubmitEssay(
    Program& program, const std::string& essayId, const std::string& workId, int tries,
    const std::function<bool()>& isOver = [] { return false; });

}  // namespace marovane
