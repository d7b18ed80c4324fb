#include "engine/grammar/phrases.h"

#include <algorithm>

namespace tolvex {

bool Phrases::AnyIn(int from, int to, ListName list) const {
  for (int i = from; i < std::min(to, Size()); ++i) {
    if (In(i, list)) return true;
  }
  return false;
}

bool Phrases::IsYear(int i) const {
  const std::string& word = Lower(i);
  return word.size() == 4 && std::all_of(word.begin(), word.end(), IsDigit);
}

int Phrases::NextComma(int i) const {
  while (i < Size() && !IsComma(i)) ++i;
  return i;
}

NounPhrase Phrases::NounPhraseAt(int i) const {
  NounPhrase phrase;
  for (phrase.end = i; phrase.end < Size(); ++phrase.end) {
    const Tag tag = TagAt(phrase.end);
    const Tag next = TagAt(phrase.end + 1);
    const bool modifier = IsDeterminer(tag) || tag == Tag::CD || IsAdjective(tag) ||
                          (tag == Tag::RB && IsAdjective(next)) || (tag == Tag::VBN && IsNoun(next));
    if (tag == Tag::POS) {
      phrase.head = -1;
    } else if (tag == Tag::NN || tag == Tag::NNS) {
      phrase.head = phrase.end;
    } else if (!modifier || phrase.head >= 0) {
      break;
    }
  }
  return phrase;
}

int Phrases::SkipInfinitive(int i) const {
  if (Lower(i) != "to" || Lacks(i + 1, kBase)) return i;
  const NounPhrase object = NounPhraseAt(i + 2);
  return object.head < 0 ? i + 2 : object.end;
}

int Phrases::SkipPrepositions(int i) const {
  while (In(i, "phrase_prepositions")) {
    const NounPhrase inner = NounPhraseAt(i + 1);
    int end = inner.head < 0 ? i + 1 : inner.end;
    while (inner.head < 0 && (TagAt(end) == Tag::NNP || TagAt(end) == Tag::CD)) ++end;
    if (end == i + 1) break;
    i = end;
  }
  return i;
}

int Phrases::SkipAdverbs(int i) const {
  while (TagAt(i) == Tag::RB && !IsNot(i)) ++i;
  while (In(i, "adverbs_before_verb") && TagAt(i) != Tag::PRP) ++i;
  return i;
}

int Phrases::SkipGroupAdverbs(int i) const {
  while (In(i, "group_adverbs") || (TagAt(i) == Tag::RB && Lower(i) != "better")) ++i;
  return i;
}

int Phrases::SubjectEnd(int verb) const {
  int end = verb - 1;
  while (IsAdverb(TagAt(end))) --end;
  return end;
}

bool Phrases::IsPlainPresent(int i) const {
  if (Is(i, {"are", "were", "have", "do", "am"})) return true;
  if (Is(i, {"need", "dare"}) && IsNot(i + 1)) return false;  // modal: "She needn't come."
  const bool tagged = TagAt(i) == Tag::VBP || TagAt(i) == Tag::VB;
  return tagged && Has(i, kBase) && Lacks(i, kPast);
}

bool Phrases::IsThirdPresent(int i) const {
  if (Is(i, {"is", "was", "has", "does"})) return true;
  return TagAt(i) == Tag::VBZ && Has(i, kThird) && Lower(i)[0] != '\'';
}

bool Phrases::TakesBareVerb(int subject) const {
  return AnyIn(std::max(0, subject - 2), subject, "before_bare_verb") ||
         AnyIn(std::max(0, subject - 6), subject, "subjunctive_triggers");
}

std::string Phrases::ThirdPersonOf(int verb) const {
  const std::string& word = Lower(verb);
  if (word == "are" || word == "am") return "is";
  if (word == "were") return "was";
  if (word == "have") return "has";
  if (word == "do") return "does";
  return Has(verb, kBase) ? Words().Inflect(word, kThird) : "";
}

std::string Phrases::PluralVerbOf(int verb) const {
  const std::string& word = Lower(verb);
  if (word == "is") return "are";
  if (word == "was") return "were";
  return std::string(Lemma(verb));
}

}  // namespace tolvex
