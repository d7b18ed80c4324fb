// The steps of the walk, for its files alone.
#pragma once

#include <functional>
#include <string>

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

/// Thrown where a walk finds that its window has gone while it waited: nobody is there to walk for.
struct WindowGone {};

/// Whether the window of this walk is still there.
bool HasItsWindow(EssayContext& context);
/// Throws WindowGone when it is not.
void RequireWindow(EssayContext& context);
/// Waits until something is met. Throws WindowGone as soon as the window has gone.
void Await(EssayContext& context, const std::function<bool()>& isMet);

/// Shows a message in the place of the essay window, which stays away. True when the user agrees. Throws
/// WindowGone when the window has gone meanwhile.
bool AskInPlace(EssayContext& context, const Message& message);

/// How the walk goes on.
enum class Next { kSentence, kSameAgain, kStop };

/// Brings the main window, has the user correct gEssayCurSentence there, and puts the correction into the
/// essay.
Next CorrectSentence(EssayContext& context);

/// Gives the main window's menu the button back that a correction has hidden.
void RestoreMenu(EssayContext& context);

/// What is walked through. While the walk waits, other windows change the shared values.
struct Walked {
  std::string essayId;
  std::string workId;
  bool isOwnTopic = true;
};

/// Closes the essay, whose last sentence has passed, and uploads the records.
void FinishEssay(EssayContext& context);
/// Leaves the walking state, finished or stopped.
void WrapUp(EssayContext& context, const Walked& walked);
/// Offers to hand the essay in, when it answers an assignment.
void HandIn(EssayContext& context, const Walked& walked);
/// Shows the report in the essay window, at the end of a walk.
void ShowReport(EssayContext& context, const Walked& walked);

}  // namespace essay_walk

}  // namespace marovane
