// The walk through an essay, sentence by sentence.
#pragma once

namespace marovane {

struct EssayContext;

/// Walks the text of the essay window and shows its report. It returns when the report is shown, or when the
/// text was refused: the user has got a message then, and nothing is written. While it waits, the handlers
/// of all windows run. Throws RunTimeError when a record fails; the walk has then been stopped, and the text
/// is in the box.
void StartEssayProcess(EssayContext& context);

}  // namespace marovane
