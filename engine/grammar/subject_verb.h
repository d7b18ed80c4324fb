// What the agreement checks share: finding the verb of a subject and its forms.
#pragma once

#include <string>

#include "engine/sentence/sentence.h"

namespace tolvex {

/// The first place at or behind i that holds no adverb.
int SkipAdverbs(const Sentence& sentence, int i);

/// What "he" wants in place of a present verb that does not agree ("go": "goes"); empty for other words.
std::string ThirdPersonOf(const Sentence& sentence, int verb);

/// What "they" wants in place of a verb in the third person ("goes": "go", "was": "were").
std::string PluralVerbOf(const Sentence& sentence, int verb);

bool IsPlainPresent(const Sentence& sentence, int i);  ///< go, are, have
bool IsThirdPresent(const Sentence& sentence, int i);  ///< goes, is, was, has

/// "make it work", "suggest he go", "did she say": the verb has no ending whatever the subject is.
bool TakesBareVerb(const Sentence& sentence, int subject);

}  // namespace tolvex
