#include "engine/rules/pattern_index.h"

#include <algorithm>
#include <limits>

namespace tolvex {
namespace {

using Kind = Condition::Kind;

// A condition is met by its own words or by those of one of its alternatives.
std::vector<const Condition*> Alternatives(const Condition& condition) {
  if (condition.kind != Kind::kEither) return {&condition};
  std::vector<const Condition*> all;
  for (const Condition& one : condition.either) all.push_back(&one);
  return all;
}

bool NamesWords(const Condition* one) {
  return !one->negated &&
         (one->kind == Kind::kWords || one->kind == Kind::kLemmas || one->kind == Kind::kNounLemmas);
}

// The condition with the fewest words that one of the pattern's tokens must meet, or nullptr.
const Condition* Narrowest(const Pattern& pattern) {
  const Condition* best = nullptr;
  std::size_t fewest = std::numeric_limits<std::size_t>::max();
  for (const Element& element : pattern.elements) {
    if (element.optional || element.zeroWidth) continue;
    for (const Condition& condition : element.all) {
      const auto alternatives = Alternatives(condition);
      if (condition.negated || !std::all_of(alternatives.begin(), alternatives.end(), NamesWords)) continue;
      std::size_t count = 0;
      for (const Condition* one : alternatives) count += one->words->size();
      if (count >= fewest) continue;
      fewest = count;
      best = &condition;
    }
  }
  return best;
}

}  // namespace

PatternIndex::PatternIndex(const RuleBook& rules) {
  for (const Rule& rule : rules.Rules()) {
    for (const Pattern& pattern : rule.patterns) {
      entries_.push_back({&rule, &pattern});
      Add(pattern);
    }
  }
}

void PatternIndex::Add(const Pattern& pattern) {
  const Condition* narrowest = Narrowest(pattern);
  always_.push_back(narrowest == nullptr);
  if (narrowest == nullptr) return;
  const auto entry = static_cast<std::uint32_t>(entries_.size() - 1);
  for (const Condition* one : Alternatives(*narrowest)) {
    for (const std::string& word : *one->words) PlacesOf(one->kind)[word].push_back(entry);
  }
}

PatternIndex::Places& PatternIndex::PlacesOf(Kind kind) {
  if (kind == Kind::kLemmas) return verbs_;
  return kind == Kind::kNounLemmas ? nouns_ : words_;
}

std::vector<PatternIndex::Entry> PatternIndex::Candidates(const Sentence& sentence) const {
  std::vector<bool> wanted = always_;
  const auto mark = [&](const Places& places, std::string_view word) {
    const auto found = places.find(word);
    if (found == places.end()) return;
    for (const std::uint32_t entry : found->second) wanted[entry] = true;
  };
  for (int i = 0; i < sentence.Size(); ++i) {
    mark(words_, sentence.Lower(i));
    mark(verbs_, sentence.Lemma(i));
    mark(nouns_, sentence.Words().NounLemma(sentence.Lower(i)));
  }
  std::vector<Entry> candidates;
  for (std::size_t entry = 0; entry < entries_.size(); ++entry) {
    if (wanted[entry]) candidates.push_back(entries_[entry]);
  }
  return candidates;
}

}  // namespace tolvex
