// An edit as a finding, with the rule that explains it.
#pragma once

#include "engine/edits/edit.h"
#include "engine/rules/finding.h"

namespace tolvex {

/// An insertion is shown at the word behind it: "^student" becomes "student: a student". `rules` holds the
/// rules "edit-…".
Finding FindingOf(const Edit& edit, const Sentence& sentence, const RuleBook& rules);

}  // namespace tolvex
