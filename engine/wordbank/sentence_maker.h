// Puts the English of single Chinese words together to a line that reads as a sentence.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wexbin {

/// One word or sign of the Chinese text and its English; a verb's begins with "to ".
struct Piece {
  std::string_view chinese;
  std::string english;
};

/// Blanks, capitals, quotes, negated verbs, "is" before "very", the -s of the third person.
std::string MakeSentence(std::vector<Piece> pieces);

}  // namespace wexbin
