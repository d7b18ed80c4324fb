// Fills the correction templates of a rule.
#pragma once

#include <string>
#include <vector>

#include "engine/rules/rule.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

/// Tokens [first, last] that an element of a pattern took.
struct TokenRange {
  int first = 0;
  int last = -1;
};

/// The corrections of a match. A template word is a plain word or "{n}", the words that element n (from 1)
/// took, or "{n:form}", those words inflected: base third past part ing (verbs), pl sg (nouns), comp sup
/// pos (adjectives), noun adj verb adv (another part of speech with the same root), plain (the present form
/// after "they"), cut (without the last letter), a (the words with "a" or "an" before them), lower (in small
/// letters). What follows the brace is added. A template with a form that the lexicon does not know is
/// left out.
std::vector<std::string> FillFixes(const Pattern& pattern, const Sentence& sentence,
                                   const std::vector<TokenRange>& places);

/// A word of the same root that is mostly this part of speech, else one that is so more often than anything
/// else; empty when there is none.
std::string Derived(const Lexicon& lexicon, std::string_view word, Part part);

/// Whether "an" goes before a word in small letters.
bool SoundsLikeVowel(const std::string& word);

/// Tokens [first, last] as they were written.
std::string TextOf(const Sentence& sentence, int first, int last);

/// The same with "a" or "an" before them.
std::string WithArticle(const Sentence& sentence, int first, int last);

}  // namespace tolvex
