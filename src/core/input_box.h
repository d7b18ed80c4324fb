// The boxes into which sentences are typed.
#pragma once

#include <string>

#include "platform/controls.h"

namespace marovane {

/// How sentences look in the box of the main window.
inline constexpr const char* kSentenceFont = "Arial";
inline constexpr Color kSentenceColor = Rgb(255, 204, 0);

/// Puts a sentence into that box, selected as a whole.
void PutSentence(RichTextBox& txtInput, const std::string& sentence);

}  // namespace marovane
