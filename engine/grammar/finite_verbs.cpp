#include "engine/grammar/finite_verbs.h"

#include <algorithm>

namespace tolvex {
namespace {

int SkipAdverbTags(const Sentence& sentence, int i) {
  while (IsAdverb(sentence.TagAt(i)) || sentence.Is(i, {"n't", "not"})) ++i;
  return i;
}

bool IsHave(const Sentence& sentence, int i) { return sentence.Is(i, {"have", "has", "'ve"}); }

bool IsPastWord(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"was", "were", "did", "had"})) return sentence.TagAt(i) != Tag::VBN;
  return sentence.TagAt(i) == Tag::VBD && sentence.Has(i, kPast);
}

// "Did you watch", "let him go": the verb behind the subject is no finite one.
bool IsInverted(const Sentence& sentence, int i) {
  int subject = i - 1;
  while (IsAdverb(sentence.TagAt(subject))) --subject;
  if (sentence.TagAt(subject) != Tag::PRP && !IsNoun(sentence.TagAt(subject))) return false;
  int before = subject - 1;
  while (sentence.TagAt(before) == Tag::DT || sentence.TagAt(before) == Tag::PRPS ||
         IsAdjective(sentence.TagAt(before)))
    --before;
  if (sentence.Is(before, {"n't", "not"})) --before;
  return sentence.TagAt(before) == Tag::MD || sentence.Is(before, {"do", "does", "did", "let", "lets"});
}

// "He go", "she work": the tagger may take the faulty verb for a noun.
bool FollowsSubjectPronoun(const Sentence& sentence, int i) {
  int subject = i - 1;
  while (IsAdverb(sentence.TagAt(subject))) --subject;
  if (!sentence.Is(subject, {"i", "he", "she", "we", "they"})) return false;
  return sentence.Has(i, kBase | kThird) && sentence.Lacks(i, kPast);
}

bool IsPresentWord(const Sentence& sentence, int i) {
  const Tag tag = sentence.TagAt(i);
  if (IsInverted(sentence, i)) return false;
  if (tag == Tag::VBP || tag == Tag::VBZ) return sentence.Lacks(i, kPast);
  const bool nounLike = tag == Tag::VB || IsNoun(tag);
  return nounLike && FollowsSubjectPronoun(sentence, i);
}

// "Our family lives here": where no other verb is, a plural noun behind a noun is the verb.
FiniteVerb HiddenVerb(const Sentence& sentence) {
  for (int i = 1; i + 1 < sentence.Size(); ++i) {
    const bool subject = sentence.TagAt(i - 1) == Tag::NN || sentence.TagAt(i - 1) == Tag::NNP;
    if (subject && sentence.TagAt(i) == Tag::NNS && sentence.Has(i, kThird)) return {i, Tense::kPresent};
  }
  return {};
}

}  // namespace

std::vector<FiniteVerb> FiniteVerbs(const Sentence& sentence) {
  std::vector<FiniteVerb> verbs;
  for (int i = 0; i < sentence.Size(); ++i) {
    if (sentence.TagAt(i) == Tag::MD) {
      verbs.push_back({i, Tense::kModal});
    } else if (IsPastWord(sentence, i)) {
      verbs.push_back({i, Tense::kPast});
    } else if (IsPresentWord(sentence, i)) {
      // Also with a wrong participle: "has ate".
      const bool perfect =
          IsHave(sentence, i) && sentence.Has(SkipAdverbTags(sentence, i + 1), kPast | kParticiple);
      verbs.push_back({i, perfect ? Tense::kPerfect : Tense::kPresent});
    }
  }
  const FiniteVerb hidden = verbs.empty() ? HiddenVerb(sentence) : FiniteVerb();
  if (hidden.at >= 0) verbs.push_back(hidden);
  return verbs;
}

FiniteVerb FirstIn(const std::vector<FiniteVerb>& verbs, int from, int to) {
  for (const FiniteVerb& verb : verbs) {
    if (verb.at >= from && verb.at < to) return verb;
  }
  return {};
}

FiniteVerb LastIn(const std::vector<FiniteVerb>& verbs, int from, int to) {
  FiniteVerb last;
  for (const FiniteVerb& verb : verbs) {
    if (verb.at >= from && verb.at < to) last = verb;
  }
  return last;
}

int CountIn(const std::vector<FiniteVerb>& verbs, int from, int to) {
  return static_cast<int>(std::count_if(
      verbs.begin(), verbs.end(), [&](const FiniteVerb& verb) { return verb.at >= from && verb.at < to; }));
}

bool IsSurelyPast(const Sentence& sentence, const FiniteVerb& verb) {
  return verb.at >= 0 && verb.tense == Tense::kPast &&
         (sentence.Lacks(verb.at, kBase) || sentence.Is(verb.at, {"was", "were", "did", "had"}));
}

std::string PastOf(const Sentence& sentence, int verb) {
  if (sentence.Is(verb, {"is", "am"})) return "was";
  if (sentence.Is(verb, {"'s", "'m"})) return " was";
  if (sentence.Lower(verb) == "are") return "were";
  if (sentence.Lower(verb) == "'re") return " were";
  if (sentence.Is(verb, {"do", "does"})) return "did";
  if (sentence.Is(verb, {"have", "has"})) return "had";
  return sentence.Inflected(verb, kPast);
}

}  // namespace tolvex
