// Local edits: the small changes that may mend a sentence, without a word yet on which of them does.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/sentence/sentence.h"

namespace tolvex {

enum class EditKind : std::uint8_t {
  kAgreement,    ///< go: goes
  kTense,        ///< go: went
  kVerbForm,     ///< go: going, gone
  kNounVerb,     ///< a word taken for a noun becomes another verb form
  kBeForm,       ///< is: are, was, being
  kBeInsert,     ///< he tall: he is tall
  kBeDelete,     ///< he is agrees: he agrees
  kToInsert,     ///< want go: want to go
  kToDelete,     ///< can to go: can go
  kGerund,       ///< enjoy to read: enjoy reading; look forward to see: to seeing
  kInfinitive,   ///< decided going: decided to go
  kPlural,       ///< book: books
  kSingular,     ///< books: book
  kArticleSwap,  ///< a: an, the
  kArticleDelete,
  kArticleInsert,
  kPrepositionSwap,
  kPrepositionDelete,
  kPrepositionInsert,
  kPronounInsert,   ///< because is late: because it is late
  kPronounDelete,   ///< the book it is: the book is
  kRelativeInsert,  ///< people live here: people who live here
  kRelativeDelete,  ///< the man who is: the man is
  kConfusion,       ///< then: than
  kDerivation,      ///< develop: development
  kCompare,         ///< tall: taller
};
inline constexpr int kEditKindCount = static_cast<int>(EditKind::kCompare) + 1;

/// Puts words in place of tokens [first, last]; an insertion before `first` has last == first - 1.
struct Edit {
  EditKind kind = EditKind::kAgreement;
  int first = 0;
  int last = -1;
  std::vector<std::string> words;  ///< small letters, but for "I"
};

/// All edits of a sentence, from left to right: two to four a word. Names are left alone.
std::vector<Edit> ProposeEdits(const Sentence& sentence);

/// The tokens with an edit carried out. New tokens have no tag and no offsets.
std::vector<Token> Apply(const std::vector<Token>& tokens, const Edit& edit);

/// The words that learners confuse with this one, in either direction.
const std::vector<std::string>& ConfusedWith(std::string_view word);

}  // namespace tolvex
