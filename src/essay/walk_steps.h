// The steps of the walk, for its files alone.
#pragma once

#include "core/message_catalogue.h"
#include "essay/essay_context.h"

namespace marovane {

namespace essay_walk {

inline constexpr TextStyle kUnread{.color = Rgb(0, 0, 0)};
inline constexpr TextStyle kCurrent{.color = Rgb(0, 0, 255), .underline = true};
inline constexpr TextStyle kPassed{.color = Rgb(0, 100, 0)};
inline constexpr TextStyle kDone{.color = Rgb(50, 50, 50)};

/// Has the engine judge gEssayCurSentence, which no record knows: files its page, records the sentence,
/// counts the mistake, and sets gVerdict to "PASS", "WARN", "ERRS", or to "STOP" without a record when the
/// user stopped the walk or the engine was silent for 30 seconds. Any other answer is recorded as an error
/// and leaves gVerdict empty. Throws RunTimeError when the local engine does not start or a record fails.
void PassStringToEngineEssay(EssayContext& context);

/// Records gEssayCurSentence as right, under gEssayId and gEssaySId.
/// @param haveHtm "N" without a filed page; with one "1" after an error, "2" otherwise
void RecordPassed(EssayContext& context, const std::string& haveHtm);
/// Records an attempt that was refused, likewise.
/// @param sentence with the engine's marks
void RecordRefused(EssayContext& context, const std::string& sentence, const std::string& errcode,
                   const std::string& haveHtm);

/// The word in gVerdict while the walk waits for the user's correction.
inline constexpr const char* kAwaitsCorrection = "##EDIT##";

/// Shows a message in the place of the essay window, which stays away. True when the user agrees.
bool AskInPlace(EssayContext& context, const Message& message);

/// Whether the window of this walk is still there: it may have gone while the walk waited.
bool HasItsWindow(EssayContext& context);

/// How the walk goes on.
enum class Next { kSentence, kSameAgain, kStop };

/// Brings the main window, has the user correct gEssayCurSentence there, and puts the correction into the
/// essay.
Next CorrectSentence(EssayContext& context);

/// Closes the essay, whose last sentence has passed, and uploads the records.
void FinishEssay(EssayContext& context);
/// Leaves the walking state, finished or stopped.
void WrapUp(EssayContext& context);
/// Offers to hand the essay in, when it answers an assignment.
void HandIn(EssayContext& context);
/// Shows the report in the essay window, at the end of a walk.
void ShowReport(EssayContext& context);

}  // namespace essay_walk

}  // namespace marovane
