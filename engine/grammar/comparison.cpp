// "taller then me", "more taller", "more easy", "than" without a comparative.
#include <algorithm>

#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class ComparisonCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 0; i < Size(); ++i) {
      if (Is(i, {"more", "most"})) CheckDegree(i);
      if (Lower(i) == "then") CheckThen(i);
      if (Lower(i) == "than") CheckThan(i);
    }
  }

 private:
  // "He is more happier", "the most tallest", "It is more easy."
  void CheckDegree(int i) {
    const bool more = Lower(i) == "more";
    if (more ? IsComparative(i + 1) : IsSuperlative(i + 1)) {
      Replace("double-degree", i, i + 1, At(i + 1).text);
    } else if (more && IsShortAdjective(i + 1)) {
      Replace("short-comparative", i, i + 1, Related(i + 1, Relation::kComparative));
    }
  }

  bool IsComparative(int i) const {
    const Tag tag = TagAt(i);
    return Is(i, {"better", "worse"}) || ((tag == Tag::JJR || tag == Tag::RBR) && Has(i, kComparative));
  }

  bool IsSuperlative(int i) const { return TagAt(i) == Tag::JJS || Has(i, kSuperlative); }

  bool IsShortAdjective(int i) const {
    return In(i, "short_adjectives") && TagAt(i) == Tag::JJ && !IsNoun(TagAt(i + 1));
  }

  // "She is taller then me."
  void CheckThen(int i) {
    if (IsSign(i + 1)) return;
    for (int at = i - 1; at >= std::max(0, i - 6); --at) {
      if (Is(at, {",", "and", ";"})) return;
      if (TagAt(at) == Tag::JJR || In(at, "common_comparatives")) {
        Replace("then-than", i, "than");
        return;
      }
    }
  }

  // "She is tall than me."
  void CheckThan(int i) {
    if (i == 0 || IsComparedBefore(i)) return;
    if (Has(i - 1, kPositive) && TagAt(i - 1) == Tag::JJ) {
      Replace("than-alone", i - 1, i, std::string(Related(i - 1, Relation::kComparative)) + " than");
    } else {
      findings_.Add("than-alone", i, i, {});
    }
  }

  // "He would rather walk than wait."
  bool IsComparedBefore(int than) const {
    for (int i = 0; i < than; ++i) {
      const Tag tag = TagAt(i);
      if (tag == Tag::JJR || tag == Tag::RBR || Has(i, kComparative) || In(i, "comparing_words")) return true;
    }
    return false;
  }
};

}  // namespace

void CheckComparison(const Phrases& phrases, Findings& findings) { ComparisonCheck(phrases, findings).Run(); }

}  // namespace tolvex
