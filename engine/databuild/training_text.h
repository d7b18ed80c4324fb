// The texts that models are trained on: books from standard input, and two tagged corpora.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "engine/text/token.h"

namespace tolvex::databuild {

/// Every model is trained on its own part of the text, so that what one has learnt by heart does not mislead
/// the next.
enum class TextPart { kNgrams, kRanker };

/// Calls `take` with the tokens (not yet tagged) of each sentence of a part. Of the books, one in five is the
/// ranker's, of the tagged corpora every other sentence. Books begin with a line "# name".
void ForEachSentence(TextPart part, const std::filesystem::path& slashTagged,
                     const std::filesystem::path& underscoreTagged,
                     const std::function<void(std::vector<Token>&)>& take);

}  // namespace tolvex::databuild
