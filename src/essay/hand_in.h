// Handing an essay in as the answer to a teacher's assignment.
#pragma once

#include <string>

struct Program;

/// Tells the server that an essay is the answer to an assignment. Gives the reply, which begins with "OK" on
/// success; "" when none came.
std::string SubmitEssayFinal(Program& program, const std::string& account, const std::string& essayId,
                             const std::string& workId);

/// Tries until the server takes it, with three seconds between.
/// @return false when all tries have failed
bool SubmitUntilTaken(Program& program, const std::string& essayId, const std::string& workId, int tries);

/// Waits while events go on.
void WaitSeconds(Program& program, int seconds);
