#include "engine/grammar/subject_verb.h"

#include <algorithm>

#include "engine/rules/rule.h"

namespace tolvex {

int SkipAdverbs(const Sentence& sentence, int i) {
  static const WordSet kAdverbs = {"also", "always", "often", "usually",   "never", "really",
                                   "just", "still",  "only",  "sometimes", "even",  "now",
                                   "then", "both",   "all",   "actually"};
  while (sentence.TagAt(i) == Tag::RB && sentence.Lower(i) != "n't" && sentence.Lower(i) != "not") ++i;
  while (kAdverbs.count(sentence.Lower(i)) != 0 && sentence.TagAt(i) != Tag::PRP) ++i;
  return i;
}

std::string ThirdPersonOf(const Sentence& sentence, int verb) {
  const std::string& word = sentence.Lower(verb);
  if (word == "are" || word == "am") return "is";
  if (word == "were") return "was";
  if (word == "have") return "has";
  if (word == "do") return "does";
  return sentence.Has(verb, kBase) ? sentence.Words().Inflect(word, kThird) : "";
}

std::string PluralVerbOf(const Sentence& sentence, int verb) {
  const std::string& word = sentence.Lower(verb);
  if (word == "is") return "are";
  if (word == "was") return "were";
  return std::string(sentence.Lemma(verb));
}

bool IsPlainPresent(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"are", "were", "have", "do", "am"})) return true;
  const bool tagged = sentence.TagAt(i) == Tag::VBP || sentence.TagAt(i) == Tag::VB;
  return tagged && sentence.Has(i, kBase) && sentence.Lacks(i, kPast);
}

bool IsThirdPresent(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"is", "was", "has", "does"})) return true;
  return sentence.TagAt(i) == Tag::VBZ && sentence.Has(i, kThird) && sentence.Lower(i)[0] != '\'';
}

bool TakesBareVerb(const Sentence& sentence, int subject) {
  static const WordSet kBefore = {"let",     "make", "makes", "made",  "making", "help",   "helps", "helped",
                                  "helping", "see",  "saw",   "watch", "hear",   "heard",  "have",  "had",
                                  "having",  "did",  "do",    "does",  "can",    "could",  "will",  "would",
                                  "should",  "may",  "might", "must",  "shall",  "feel",   "lets",  "letting",
                                  "seen",    "has",  "n't",   "not",   "get",    "rather", "lest",  "whether",
                                  "is",      "are",  "was",   "were"};
  static const WordSet kSubjunctive = {
      "suggest",  "suggests", "suggested", "recommend", "recommends", "recommended", "insist",    "insists",
      "insisted", "demand",   "demands",   "demanded",  "important",  "necessary",   "essential", "require",
      "requires", "required", "vital",     "wish",      "propose",    "proposed",    "request",   "requested",
      "asked",    "ask",      "advise",    "advised",   "crucial"};
  for (int i = std::max(0, subject - 6); i < subject; ++i) {
    if (i >= subject - 2 && kBefore.count(sentence.Lower(i)) != 0) return true;
    if (kSubjunctive.count(sentence.Lower(i)) != 0) return true;
  }
  return false;
}

}  // namespace tolvex
