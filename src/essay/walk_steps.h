// The steps of the walk, for its files alone.
#pragma once

#include "core/message_catalogue.h"
#include "essay/room.h"

namespace marovane {

namespace essay_walk {

inline constexpr TextStyle kUnread{.color = Rgb(0, 0, 0)};
inline constexpr TextStyle kCurrent{.color = Rgb(0, 0, 255), .underline = true};
inline constexpr TextStyle kPassed{.color = Rgb(0, 100, 0)};
inline constexpr TextStyle kDone{.color = Rgb(50, 50, 50)};

/// The word in gVerdict while the walk waits for the user's correction.
inline constexpr const char* kAwaitsCorrection = "##EDIT##";

/// Shows a message in the place of the essay window, which stays away. True when the user agrees.
bool AskInPlace(EssayRoom& room, const Message& message);

/// How the walk goes on.
enum class Next { kSentence, kSameAgain, kStop };

/// Brings the main window, has the user correct gEssayCurSentence there, and puts the correction into the
/// essay.
Next CorrectSentence(EssayRoom& room);

/// Closes the essay, whose last sentence has passed, and uploads the records.
void FinishEssay(EssayRoom& room);
/// Leaves the walking state, finished or stopped.
void WrapUp(EssayRoom& room);
/// Offers to hand the essay in, when it answers an assignment.
void HandIn(EssayRoom& room);
void ShowReport(EssayRoom& room);

}  // namespace essay_walk

}  // namespace marovane
