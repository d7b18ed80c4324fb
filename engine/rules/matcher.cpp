#include <algorithm>

#include "engine/rules/fix.h"
#include "engine/rules/pattern_index.h"

namespace tolvex {
namespace {

bool InLemmas(const Sentence& sentence, int i, const WordSet& words) {
  const std::string_view lemma = sentence.Lemma(i);
  return !lemma.empty() && words.contains(lemma);
}

bool HoldsPlainly(const Condition& condition, const Sentence& sentence, int i) {
  using Kind = Condition::Kind;
  const Token& token = sentence.At(i);
  switch (condition.kind) {
    case Kind::kAny:
      return i < sentence.Size();
    case Kind::kWords:
      return condition.words->contains(token.lower);
    case Kind::kLemmas:
      return InLemmas(sentence, i, *condition.words);
    case Kind::kNounLemmas:
      return condition.words->contains(sentence.Words().NounLemma(token.lower));
    case Kind::kTags:
      return ((condition.tags >> static_cast<unsigned>(token.tag)) & 1U) != 0;
    case Kind::kForms:
      return sentence.Has(i, condition.mask);
    case Kind::kParts:
      return sentence.CanBe(i, condition.mask);
    case Kind::kMostly:
      return sentence.Mostly(i, static_cast<Part>(condition.mask));
    case Kind::kCapital:
      return token.IsCapitalised();
    case Kind::kFirst:
      return i == 0;
    case Kind::kClause:
      return sentence.StartsClause(i);
    case Kind::kEnd:
      return sentence.IsSign(i);
    case Kind::kEither:
      return std::any_of(condition.either.begin(), condition.either.end(),
                         [&](const Condition& one) { return HoldsPlainly(one, sentence, i); });
  }
  return false;
}

bool AllHold(const std::vector<Condition>& all, const Sentence& sentence, int i) {
  return std::all_of(all.begin(), all.end(), [&](const Condition& condition) {
    return HoldsPlainly(condition, sentence, i) != condition.negated;
  });
}

class PatternMatch {
 public:
  PatternMatch(const Rule& rule, const Pattern& pattern, const Sentence& sentence)
      : rule_(rule), pattern_(pattern), sentence_(sentence), places_(pattern.elements.size()) {}

  bool At(int start) { return Match(0, start) && GuardsHold(start); }
  const std::vector<TokenRange>& Places() const { return places_; }

 private:
  bool Match(std::size_t element, int at) {
    if (element == pattern_.elements.size()) {
      end_ = at;
      return true;
    }
    const Element& wanted = pattern_.elements[element];
    if (wanted.zeroWidth) {
      places_[element] = {at, at - 1};
      return AllHold(wanted.all, sentence_, at) && Match(element + 1, at);
    }
    int taken = 0;
    const int most = wanted.repeated ? sentence_.Size() : 1;
    while (taken < most && at + taken < sentence_.Size() && AllHold(wanted.all, sentence_, at + taken))
      ++taken;
    for (const int least = wanted.optional ? 0 : 1; taken >= least; --taken) {
      places_[element] = {at, at + taken - 1};
      if (Match(element + 1, at + taken)) return true;
    }
    return false;
  }

  bool GuardsHold(int start) const {
    return std::all_of(rule_.guards.begin(), rule_.guards.end(), [&](const Guard& guard) {
      const int from = guard.before ? 0 : end_;
      const int to = guard.after ? sentence_.Size() : start;
      bool found = false;
      for (int i = from; i < to && !found; ++i) found = AllHold(guard.all, sentence_, i);
      return found == guard.wanted;
    });
  }

  const Rule& rule_;
  const Pattern& pattern_;
  const Sentence& sentence_;
  std::vector<TokenRange> places_;
  int end_ = 0;
};

void MatchPattern(const Rule& rule, const Pattern& pattern, const Sentence& sentence, Findings& findings) {
  PatternMatch match(rule, pattern, sentence);
  for (int start = 0; start < sentence.Size(); ++start) {
    if (!match.At(start)) continue;
    const int first = match.Places()[static_cast<std::size_t>(pattern.spanFirst)].first;
    const int last = match.Places()[static_cast<std::size_t>(pattern.spanLast)].last;
    findings.Add(rule, first, last, FillFixes(pattern, sentence, match.Places()));
    start = std::max(start, last);
  }
}

}  // namespace

void MatchPatterns(const PatternIndex& patterns, const Sentence& sentence, Findings& findings) {
  for (const auto& [rule, pattern] : patterns.Candidates(sentence))
    MatchPattern(*rule, *pattern, sentence, findings);
}

}  // namespace tolvex
