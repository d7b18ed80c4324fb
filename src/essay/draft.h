// The text of an essay that was typed and not sent. It waits in a file for the next essay window.
#pragma once

#include <string>

namespace marovane {

struct Program;

/// The draft of the account; "" when there is none. Throws RunTimeError.
std::string ReadDraft(const Program& program);
/// Replaces it; "" removes it. Throws RunTimeError.
void WriteDraft(Program& program, const std::string& text);

}  // namespace marovane
