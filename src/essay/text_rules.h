// Which texts can be walked.
#pragma once

#include <string>

#include "core/message_catalogue.h"

namespace marovane {

/// Most sentences that an essay may have.
inline constexpr int kMostSentences = 1000;
/// Most UTF-16 units that an essay may have: places in it are 16-bit numbers.
inline constexpr int kLongestEssay = 32767;

/// The text with one blank for each line end within a sentence, as a paste of wrapped lines has them. Line
/// ends between two sentences stay.
/// @param text its line ends are CR LF
std::string JoinWrappedLines(const std::string& text);

/// The message that refuses a text, null for one that can be walked: it is empty, has no end mark at its end,
/// holds signs that no engine accepts, or is too long.
const Message* RefusalOf(const std::string& text);

/// The same for a text that a correction has led to, whose signs the user answers for.
const Message* RefusalOfCorrected(const std::string& text);

}  // namespace marovane
