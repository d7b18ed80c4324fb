// Finds the patterns of rules in a sentence.
#pragma once

#include "engine/rules/finding.h"
#include "engine/rules/pattern_index.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

/// Adds every match of every pattern rule, at most one for each rule and place.
void MatchPatterns(const PatternIndex& patterns, const Sentence& sentence, Findings& findings);

}  // namespace tolvex
