// Suggestions for a right sentence: better partners for weak pairs, more precise words for overworked ones.
#pragma once

#include <string>
#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/sentence/sentence.h"
#include "engine/tables/table_file.h"
#include "engine/wordbank/text_table.h"

namespace tolvex {

/// Both lists together hold at most five items.
struct Suggestions {
  /// Items as "rain 名詞 heavy 形容詞": word, its part of speech, better partner, its part of speech.
  std::vector<std::string> partners;

  /// Items as "big%2CSJ||very big → huge、enormous": the query for the word bank, whose comma is written as
  /// in a form because a comma parts the items, and the text to show.
  std::vector<std::string> words;
};

/// The items parted by commas, "0" for none.
std::string SuggestionList(const std::vector<std::string>& items);

/// Reads "suggest" of a file that must outlive it.
class Advisor {
 public:
  explicit Advisor(const TableFile& tables) : texts_(tables, "suggest") {}

  Suggestions Advise(const Sentence& sentence) const;

 private:
  std::vector<std::string> BetterPartners(const Sentence& sentence) const;
  std::vector<std::string> BetterWords(const Sentence& sentence) const;
  std::string ItemFor(const std::string& shown, std::string_view word) const;

  wexbin::TextTable texts_;
};

}  // namespace tolvex
