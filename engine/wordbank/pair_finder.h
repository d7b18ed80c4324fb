// Finds word pairs in a tagged sentence by shallow patterns.
#pragma once

#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/text/token.h"
#include "engine/wordbank/pair.h"

namespace wexbin {

/// The pairs of a tagged sentence, in dictionary forms. Words that are rare, old or names are left out.
std::vector<Pair> FindPairs(const std::vector<tolvex::Token>& tokens, const tolvex::Lexicon& lexicon);

}  // namespace wexbin
