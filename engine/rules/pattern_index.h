// Finds the patterns of rules in a sentence.
#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/rules/finding.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

/// Says which patterns of a rule book can match a sentence at all: one that asks for certain words, as most
/// do, is worth trying only where one of them occurs.
class PatternIndex {
 public:
  struct Entry {
    const Rule* rule;
    const Pattern* pattern;
  };

  /// The rule book must outlive the index and not change any more.
  explicit PatternIndex(const RuleBook& rules);

  /// The patterns whose words occur in the sentence, and those without words, in the order of the book.
  std::vector<Entry> Candidates(const Sentence& sentence) const;

 private:
  using Places = std::unordered_map<std::string_view, std::vector<std::uint32_t>>;

  void Add(const Pattern& pattern);
  Places& PlacesOf(Condition::Kind kind);

  std::vector<Entry> entries_;
  std::vector<bool> always_;  // entries without words to look for
  Places words_;
  Places verbs_;  // by lemma
  Places nouns_;
};

/// Adds every match of every pattern rule, at most one for each rule and place.
void MatchPatterns(const PatternIndex& patterns, const Sentence& sentence, Findings& findings);

}  // namespace tolvex
