#include "engine/grammar/noun_phrase.h"

namespace tolvex {

NounPhrase ReadNounPhrase(const Sentence& sentence, int i) {
  NounPhrase phrase;
  for (phrase.end = i; phrase.end < sentence.Size(); ++phrase.end) {
    const Tag tag = sentence.TagAt(phrase.end);
    const Tag next = sentence.TagAt(phrase.end + 1);
    const bool modifier = tag == Tag::DT || tag == Tag::PRPS || tag == Tag::CD || IsAdjective(tag) ||
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

int SkipInfinitive(const Sentence& sentence, int i) {
  if (sentence.Lower(i) != "to" || sentence.Lacks(i + 1, kBase)) return i;
  const NounPhrase object = ReadNounPhrase(sentence, i + 2);
  return object.head < 0 ? i + 2 : object.end;
}

int SkipPrepositions(const Sentence& sentence, int i) {
  while (sentence.Is(i, {"of", "in", "on", "for", "with", "between", "from", "about", "to", "at"})) {
    const NounPhrase inner = ReadNounPhrase(sentence, i + 1);
    int end = inner.head < 0 ? i + 1 : inner.end;
    while (inner.head < 0 && (sentence.TagAt(end) == Tag::NNP || sentence.TagAt(end) == Tag::CD)) ++end;
    if (end == i + 1) break;
    i = end;
  }
  return i;
}

}  // namespace tolvex
