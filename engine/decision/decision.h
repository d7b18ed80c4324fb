// From findings to a judgement: which count, in which order, and what the corrected sentence is.
#pragma once

#include <string_view>
#include <vector>

#include "engine/edits/edit.h"
#include "engine/rules/finding.h"
#include "engine/sentence/sentence.h"
#include "engine/tolvex.h"

namespace tolvex {

/// An edit as a finding. An insertion is shown at the word after it: "^student" becomes "student: a student".
/// `rules` holds the rules "edit-…".
Finding FindingOf(const Edit& edit, const Sentence& sentence, const RuleBook& rules);

/// The findings that do not overlap a surer one, the surest first.
std::vector<Finding> KeepSurest(std::vector<Finding> findings, const Sentence& sentence);

/// Builds the answer of the given findings, surest first.
Judgement MakeJudgement(std::string_view text, const Sentence& sentence,
                        const std::vector<Finding>& findings);

/// The text with the first corrections of the findings put in; they must not overlap.
std::string Correct(std::string_view text, const Sentence& sentence, std::vector<Finding> findings);

}  // namespace tolvex
