// Finds misspelled words and proposes known ones.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/rules/finding.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

constexpr std::size_t kLongestWord = 40;  ///< longer words are neither corrected nor proposed

class Speller {
 public:
  /// Gathers the words that may be proposed. `accepted` are right although no dictionary has them. Both must
  /// outlive the speller.
  Speller(const Lexicon& lexicon, const WordSet& accepted);

  /// Whether a word is right as written, also as a compound ("well-known") or with a prefix ("unhelpful").
  bool Knows(const Token& token) const;

  /// Known words that may be meant by the misspelled one, best first, at most `most`.
  std::vector<std::string> Suggest(std::string_view word, std::size_t most) const;

  /// Adds a finding for each unknown word. One with a capital inside the sentence is a name, unless a
  /// familiar name or a common word is so close that it is likelier.
  void Check(const Sentence& sentence, Findings& findings) const;

 private:
  std::string IrregularForm(const std::string& word) const;  ///< "goed": "went", "mans": "men", or ""
  std::vector<std::string> Corrections(const Token& token) const;
  std::string FamiliarName(const Token& token) const;  ///< that may be meant, or ""
  bool IsSlip(const Token& token, const std::vector<std::string>& suggestions, int most) const;
  void CheckSmallWord(const Token& token, Findings& findings, int i) const;
  bool IsKnownPart(const std::string& part) const;
  void CheckFirstWord(const Sentence& sentence, Findings& findings, int i) const;
  void CheckName(const Token& token, Findings& findings, int i) const;
  void CheckWord(const Sentence& sentence, Findings& findings, int i) const;

  const Lexicon& lexicon_;
  const WordSet& accepted_;
  std::array<std::vector<const Word*>, kLongestWord + 1> candidates_;  // common words, by length
  std::vector<std::string_view> familiarNames_;
};

/// Optimal string alignment distance in tenths, at most `limit` + 10 when it is larger. Swapped neighbours,
/// doubled letters and confused vowels cost less than other edits.
int EditCost(std::string_view written, std::string_view meant, int limit);

}  // namespace tolvex
