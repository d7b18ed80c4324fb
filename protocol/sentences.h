// Where the sentences of an essay begin and end: learner and teacher see the same ones.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace protocol {

/// ".", "?", "!" and their full-width forms.
bool IsEndMark(char16_t sign);

/// What ends a sentence beside the end marks.
enum class LineEnds { kEndSentences, kAreNothing };

/// Place of the sign that ends the sentence which begins at `from`, both from 1; 0 when no sign does. The
/// point of an abbreviation ("Mrs.", "Mr.", "Dr.", "a.m.", "p.m.") ends nothing, unless the text ends there.
int FindSentenceEnd(std::u16string_view text, int from, LineEnds lineEnds);

/// A sentence without line ends in it and blanks around it.
std::string TidySentence(std::string_view sentence);

/// The tidy sentences of a text; what comes after the last end mark is left out.
std::vector<std::string> CutSentences(std::string_view text);

/// The text as it is read for its sentences: without CR LF, and trimmed.
std::string RunningText(std::string_view text);

}  // namespace protocol
