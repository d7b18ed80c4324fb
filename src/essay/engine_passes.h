// A sentence of an essay that no record knows goes to the check engine.
#pragma once

namespace marovane {

struct EssayContext;

/// Has the engine judge gEssayCurSentence: files its page, records the sentence under gEssayId and gEssaySId,
/// counts the mistake, and sets gVerdict to "PASS", "WARN", "ERRS", or to "STOP" without a record when the
/// user stopped the walk or the engine was silent for 30 seconds. Any other answer is recorded as an error
/// and leaves gVerdict empty. Throws RunTimeError when the local engine does not start or a record fails.
void PassStringToEngineEssay(EssayContext& context);

}  // namespace marovane
