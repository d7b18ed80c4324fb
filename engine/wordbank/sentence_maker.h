// Puts the English of single Chinese words together to a line that reads as a sentence.
#pragma once

#include <string>
#include <vector>

#include "engine/wordbank/clause.h"

namespace wexbin {

/// Blanks, capitals, quotes; the words of each clause in English order and in their forms.
std::string MakeSentence(const std::vector<Piece>& pieces, const EnglishForms& forms);

}  // namespace wexbin
