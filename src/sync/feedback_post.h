// What learners say about verdicts, on its way to the server.
#pragma once

#include <string>

namespace marovane {

struct Program;

enum class FeedbackFate {
  kArrived,
  kKept,    ///< in `outbox/`, beside the uploads, until the server can be reached
  kRefused  ///< the server does not accept it, however often it is sent
};

/// Posts a feedback form to p_feedback.asp. Throws RunTimeError when it can neither be sent nor kept.
/// @param body application/x-www-form-urlencoded, Big5
FeedbackFate SendFeedback(Program& program, const std::string& body);

/// Posts once more what the present account has written and was kept, the oldest first. What does not arrive
/// stays; what the server refuses goes to the folder `refused` there.
void SendWaitingFeedback(Program& program);

}  // namespace marovane
