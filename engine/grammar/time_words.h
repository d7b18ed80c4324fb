// Words that say when: they bind the tense of their clause.
#pragma once

#include "engine/sentence/sentence.h"

namespace tolvex {

/// "yesterday", "ago", "last week", "in 2015", "in the past": whether such a time begins (or, for "ago",
/// ends) at i.
bool NamesPast(const Sentence& sentence, int i);

/// "tomorrow", "next week".
bool NamesFuture(const Sentence& sentence, int i);

/// "now", "still", "usually": words beside which a present tense is right whatever else is told.
bool TellsOfPresent(const Sentence& sentence);

}  // namespace tolvex
