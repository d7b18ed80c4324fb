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
/// @return false when all of them have failed
bool TryRepeatedly(Program& program, int tries, const std::function<bool()>& attempt);

/// Tells the server that an essay is the answer to an assignment, in so many tries.
/// @return false when it has not accepted it
bool SubmitEssay(Program& program, const std::string& essayId, const std::string& workId, int tries);

}  // namespace marovane
