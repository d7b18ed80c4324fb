// Finds the patterns of rules in a sentence.
#pragma once

#include "engine/rules/finding.h"
#include "engine/rules/rule.h"
#include "engine/text/sentence.h"

namespace tolvex {

/// Adds every match of every pattern rule, at most one for each rule and place.
void MatchPatterns(const RuleBook& rules, const Sentence& sentence, Findings& findings);

}  // namespace tolvex
