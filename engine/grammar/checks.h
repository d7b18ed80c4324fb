// The checks that are grammar rather than patterns. Their texts and examples are in engine/rules.
#pragma once

#include "engine/grammar/lists.h"
#include "engine/rules/finding.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

/// Runs them all, always in the same order.
void RunChecks(const Sentence& sentence, const Lists& lists, Findings& findings);

}  // namespace tolvex
