// The finite verbs of a sentence, from which the checks of tenses read what happens when.
#pragma once

#include <string>
#include <vector>

#include "engine/sentence/sentence.h"

namespace tolvex {

enum class Tense {
  kPresent,
  kPerfect,  ///< "have" or "has" before a participle
  kPast,
  kModal,
};

struct FiniteVerb {
  int at = -1;
  Tense tense = Tense::kPresent;
};

/// In the order of the sentence; of a verb group only its first word.
std::vector<FiniteVerb> FiniteVerbs(const Sentence& sentence);

/// The last one in [from, to), or one at -1.
FiniteVerb LastIn(const std::vector<FiniteVerb>& verbs, int from, int to);

/// The first one in [from, to), or one at -1.
FiniteVerb FirstIn(const std::vector<FiniteVerb>& verbs, int from, int to);

int CountIn(const std::vector<FiniteVerb>& verbs, int from, int to);

/// Whether the verb can be read as nothing but past: "went", not "put".
bool IsSurelyPast(const Sentence& sentence, const FiniteVerb& verb);

/// The past of a present verb ("go", "is", "don't": "went", "was", "did"); empty for other words.
std::string PastOf(const Sentence& sentence, int verb);

}  // namespace tolvex
