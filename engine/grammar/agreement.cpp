// Pronouns and their verbs: "he go", "they has".
#include "engine/grammar/checks.h"
#include "engine/grammar/subject_verb.h"

namespace tolvex {
namespace {

bool IsObject(const Sentence& sentence, int pronoun) {
  static const WordSet kObjectToo = {"it",       "everything", "something", "this",      "that",
                                     "nothing",  "everyone",   "you",       "everybody", "someone",
                                     "somebody", "anyone",     "anything"};
  if (pronoun == 0 || kObjectToo.count(sentence.Lower(pronoun)) == 0) return false;
  const Tag before = sentence.TagAt(pronoun - 1);
  const bool conjunction = sentence.Is(pronoun - 1, {"because", "if", "that", "although", "while", "since",
                                                     "whether", "so", "though", "unless", "until"});
  return (before == Tag::IN && !conjunction) || before == Tag::TO ||
         (IsVerb(before) && !sentence.Is(pronoun - 1, {"think", "believe", "hope", "know", "say"})) ||
         sentence.Is(pronoun - 1, {"to", "of"});
}

bool IsJoined(const Sentence& sentence, int subject) {
  if (!sentence.Is(subject - 1, {"and", "or", "nor"})) return false;
  return IsNoun(sentence.TagAt(subject - 2)) || sentence.TagAt(subject - 2) == Tag::PRP;
}

void CheckThirdPersonPronoun(const Sentence& sentence, Findings& findings, int i) {
  static const WordSet kSingular = {"he",      "she",      "it",      "everyone",   "everybody",
                                    "someone", "somebody", "nobody",  "everything", "something",
                                    "nothing", "anyone",   "anybody", "anything"};
  if (kSingular.count(sentence.Lower(i)) == 0) return;
  const int verb = SkipAdverbs(sentence, i + 1);
  const bool contracted = sentence.Is(verb, {"do"}) && sentence.Is(verb + 1, {"n't", "not"});
  if (!IsPlainPresent(sentence, verb) && !contracted) return;
  if (TakesBareVerb(sentence, i) || IsObject(sentence, i) || IsJoined(sentence, i)) return;
  if (sentence.Lower(verb) == "were" &&
      sentence.AnyBefore(i, {"if", "as", "though", "wish", "than", "were", "suppose"}))
    return;
  if (sentence.Lower(verb) == "were" && i > 0 && IsNoun(sentence.TagAt(i - 1))) return;
  const std::string better = ThirdPersonOf(sentence, verb);
  if (!better.empty()) findings.Add("third-person", verb, verb, {better});
}

void CheckPluralPronoun(const Sentence& sentence, Findings& findings, int i) {
  const std::string& word = sentence.Lower(i);
  if (word != "i" && word != "you" && word != "we" && word != "they") return;
  const int verb = SkipAdverbs(sentence, i + 1);
  const bool wrongBe = word == "i" && sentence.Is(verb, {"are", "were"});
  const bool wasIsRight = word == "i" && sentence.Lower(verb) == "was";
  if (!(IsThirdPresent(sentence, verb) || wrongBe) || wasIsRight) return;
  const bool object =
      i > 0 && (sentence.TagAt(i - 1) == Tag::IN || sentence.TagAt(i - 1) == Tag::TO) && word == "you";

  const bool subjunctive = wrongBe && sentence.Lower(verb) == "were";
  if (object || subjunctive || IsJoined(sentence, i) ||
      (word == "you" && i > 0 && IsVerb(sentence.TagAt(i - 1))))
    return;
  const std::string better =
      word == "i" && sentence.Is(verb, {"is", "are"}) ? "am" : PluralVerbOf(sentence, verb);
  if (!better.empty()) findings.Add("plain-form", verb, verb, {better});
}

}  // namespace

void CheckPronounAgreement(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckThirdPersonPronoun(sentence, findings, i);
    CheckPluralPronoun(sentence, findings, i);
  }
}

}  // namespace tolvex
