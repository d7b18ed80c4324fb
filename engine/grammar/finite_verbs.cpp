#include <algorithm>

#include "engine/grammar/phrases.h"

namespace tolvex {
namespace {

class FiniteVerbReader : Phrases {
 public:
  explicit FiniteVerbReader(const Phrases& phrases) : Phrases(phrases) {}

  FiniteVerbs Read() const {
    FiniteVerbs verbs;
    for (int i = 0; i < Size(); ++i) {
      if (TagAt(i) == Tag::MD) {
        verbs.all.push_back({i, Tense::kModal});
      } else if (IsPastWord(i)) {
        verbs.all.push_back({i, Tense::kPast});
      } else if (IsPresentWord(i)) {
        verbs.all.push_back({i, IsPerfect(i) ? Tense::kPerfect : Tense::kPresent});
      }
    }
    const FiniteVerb hidden = verbs.all.empty() ? HiddenVerb() : FiniteVerb();
    if (hidden.at >= 0) verbs.all.push_back(hidden);
    return verbs;
  }

 private:
  bool IsPastWord(int i) const {
    if (Is(i, {"was", "were", "did", "had"})) return TagAt(i) != Tag::VBN;
    return TagAt(i) == Tag::VBD && Has(i, kPast);
  }

  bool IsPresentWord(int i) const {
    const Tag tag = TagAt(i);
    if (IsInverted(i)) return false;
    if (tag == Tag::VBP || tag == Tag::VBZ) return Lacks(i, kPast);
    return (tag == Tag::VB || IsNoun(tag)) && FollowsSubjectPronoun(i);
  }

  // Also with a wrong participle: "has ate".
  bool IsPerfect(int i) const {
    int next = i + 1;
    while (IsAdverb(TagAt(next)) || IsNot(next)) ++next;
    return Is(i, {"have", "has", "'ve"}) && Has(next, kPast | kParticiple);
  }

  // "Did you watch", "let him go": the verb after the subject is not finite.
  bool IsInverted(int i) const {
    const int subject = SubjectEnd(i);
    if (TagAt(subject) != Tag::PRP && !IsNoun(TagAt(subject))) return false;
    int before = subject - 1;
    while (IsDeterminer(TagAt(before)) || IsAdjective(TagAt(before))) --before;
    if (IsNot(before)) --before;
    return TagAt(before) == Tag::MD || Is(before, {"do", "does", "did", "let", "lets"});
  }

  // "He laugh", "He study abroad": the tagger may take the faulty verb for a noun.
  bool FollowsSubjectPronoun(int i) const {
    return Is(SubjectEnd(i), {"i", "he", "she", "we", "they"}) && Has(i, kBase | kThird) && Lacks(i, kPast);
  }

  // "Our family lives here": where there is no other verb, a plural noun after a noun is the verb.
  FiniteVerb HiddenVerb() const {
    for (int i = 1; i + 1 < Size(); ++i) {
      const Tag before = TagAt(i - 1);
      const bool subject = before == Tag::NN || before == Tag::NNP;
      if (subject && TagAt(i) == Tag::NNS && Has(i, kThird)) return {i, Tense::kPresent};
    }
    return {};
  }
};

}  // namespace

FiniteVerb FiniteVerbs::First(int from, int to) const {
  const auto found = std::ranges::find_if(all, [&](const FiniteVerb& verb) { return verb.at >= from; });
  return found == all.end() || found->at >= to ? FiniteVerb() : *found;
}

FiniteVerb FiniteVerbs::Last(int from, int to) const {
  const auto found =
      std::find_if(all.rbegin(), all.rend(), [&](const FiniteVerb& verb) { return verb.at < to; });
  return found == all.rend() || found->at < from ? FiniteVerb() : *found;
}

int FiniteVerbs::Count(int from, int to) const {
  return static_cast<int>(std::count_if(
      all.begin(), all.end(), [&](const FiniteVerb& verb) { return verb.at >= from && verb.at < to; }));
}

FiniteVerbs Phrases::ReadFiniteVerbs() const { return FiniteVerbReader(*this).Read(); }

bool Phrases::IsSurelyPast(const FiniteVerb& verb) const {
  return verb.at >= 0 && verb.tense == Tense::kPast &&
         (Lacks(verb.at, kBase) || Is(verb.at, {"was", "were", "did", "had"}));
}

std::string Phrases::PastOf(int verb) const {
  if (Is(verb, {"is", "am"})) return "was";
  if (Is(verb, {"'s", "'m"})) return " was";
  if (Lower(verb) == "are") return "were";
  if (Lower(verb) == "'re") return " were";
  if (Is(verb, {"do", "does"})) return "did";
  if (Is(verb, {"have", "has"})) return "had";
  return Inflected(verb, kPast);
}

}  // namespace tolvex
