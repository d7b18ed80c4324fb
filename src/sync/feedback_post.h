// What learners say about verdicts, on its way to the server.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// Posts a feedback form to p_feedback.asp. What does not arrive is kept in `outbox/`, beside the uploads.
/// Throws RunTimeError when it can neither be sent nor kept.
/// @param body application/x-www-form-urlencoded, Big5
/// @return whether the server has it
bool SendFeedback(Program& program, const std::string& body);

/// Posts once more what was kept, the oldest first. What does not arrive stays.
void SendWaitingFeedback(Program& program);

}  // namespace marovane
