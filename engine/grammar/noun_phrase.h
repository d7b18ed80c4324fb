// Noun phrases as the checks read them: determiners, modifiers and a head.
#pragma once

#include "engine/sentence/sentence.h"

namespace tolvex {

struct NounPhrase {
  int head = -1;  ///< -1 when there is no noun
  int end = 0;    ///< one past its last token
};

/// The noun phrase that begins at i.
NounPhrase ReadNounPhrase(const Sentence& sentence, int i);

/// The first place at or behind i that does not belong to an infinitive such as "to learn a language".
int SkipInfinitive(const Sentence& sentence, int i);

/// The first place at or behind i that does not belong to a phrase such as "of the house in the park".
int SkipPrepositions(const Sentence& sentence, int i);

}  // namespace tolvex
