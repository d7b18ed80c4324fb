// Finds word pairs in a tagged sentence by shallow patterns.
#pragma once

#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/text/token.h"
#include "engine/wordbank/pair.h"

namespace tolvex::databuild {

/// The pairs of a sentence, in dictionary forms. Words that are rare, old or names are left out.
std::vector<wexbin::Pair> FindPairs(const std::vector<Token>& tokens, const Lexicon& lexicon);

}  // namespace tolvex::databuild
