// Where the sentences of an essay begin and end.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Most sentences that an essay may have.
inline constexpr int kMostSentences = 1000;
/// Most UTF-16 units that an essay may have: places in it are 16-bit numbers.
inline constexpr int kLongestEssay = 32767;

/// What ends a sentence beside ".", "?" and "!".
enum class LineEnds { kEndSentences, kAreNothing };

/// Place of the sign that ends the sentence which begins at `from`, both from 1; 0 when no sign does. The
/// point of an abbreviation ("Mrs.", "Mr.", "Dr.", "a.m.", "p.m.") ends nothing, unless the text ends there.
int FindSentenceEnd(std::u16string_view text, int from, LineEnds lineEnds);

/// A sentence without line ends in it and blanks around it.
std::string TidySentence(const std::string& sentence);

/// The tidy sentences of a text; what stands behind the last end mark is left out.
std::vector<std::string> CutSentences(const std::string& text);

/// The text as the walk reads it: with every CR LF removed, and trimmed.
std::string RunningText(const std::string& text);
