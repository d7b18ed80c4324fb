// "taller then me", "more taller", "more easy", "than" without a comparative.
#include <algorithm>

#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

bool IsComparative(const Sentence& sentence, int i) {
  const Tag tag = sentence.TagAt(i);
  return tag == Tag::JJR || tag == Tag::RBR || sentence.Has(i, kComparative) ||
         sentence.Is(i, {"more", "less", "rather", "other", "better", "worse", "different", "fewer", "else",
                         "later", "superior", "sooner", "no", "differently", "otherwise", "than"});
}

bool IsSuperlative(const Sentence& sentence, int i) {
  return sentence.TagAt(i) == Tag::JJS || sentence.Has(i, kSuperlative);
}

void CheckDoubleDegree(const Sentence& sentence, Findings& findings, int i) {
  const bool more = sentence.Lower(i) == "more";
  if (!more && sentence.Lower(i) != "most") return;
  const Tag tag = sentence.TagAt(i + 1);
  const bool doubled = (more && (tag == Tag::JJR || tag == Tag::RBR) && sentence.Has(i + 1, kComparative)) ||
                       (!more && IsSuperlative(sentence, i + 1)) ||
                       (more && sentence.Is(i + 1, {"better", "worse"}));
  if (doubled && !sentence.Is(i + 1, {"less", "more"})) {
    findings.Add("double-degree", i, i + 1, {sentence.At(i + 1).text});
  } else if (more && findings.List("short_adjectives").count(sentence.Lower(i + 1)) != 0 && tag == Tag::JJ &&
             !IsNoun(sentence.TagAt(i + 2))) {
    findings.Add("short-comparative", i, i + 1,
                 {std::string(sentence.Words().First(sentence.Lower(i + 1), Relation::kComparative))});
  }
}

void CheckThen(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.Lower(i) != "then" || sentence.IsSign(i + 1)) return;
  for (int at = i - 1; at >= std::max(0, i - 6); --at) {
    if (sentence.Is(at, {",", "and", ";"})) return;
    const Tag tag = sentence.TagAt(at);
    if (tag == Tag::JJR ||
        sentence.Is(at, {"more", "less", "rather", "better", "taller", "older", "bigger"})) {
      findings.Add("then-than", i, i, {"than"});
      return;
    }
  }
}

void CheckThanAlone(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.Lower(i) != "than" || i == 0) return;
  for (int at = 0; at < i; ++at) {
    if (IsComparative(sentence, at)) return;
  }
  const bool adjective = sentence.Has(i - 1, kPositive) && sentence.TagAt(i - 1) == Tag::JJ;
  if (adjective) {
    findings.Add(
        "than-alone", i - 1, i,
        {std::string(sentence.Words().First(sentence.Lower(i - 1), Relation::kComparative)) + " than"});
  } else {
    findings.Add("than-alone", i, i, {});
  }
}

}  // namespace

void CheckComparison(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckDoubleDegree(sentence, findings, i);
    CheckThen(sentence, findings, i);
    CheckThanAlone(sentence, findings, i);
  }
}

}  // namespace tolvex
