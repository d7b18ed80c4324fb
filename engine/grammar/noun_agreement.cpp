// Noun phrases at the start of a clause and their verbs: "the price of the books are".
#include <algorithm>

#include "engine/grammar/checks.h"
#include "engine/grammar/noun_phrase.h"
#include "engine/grammar/subject_verb.h"

namespace tolvex {
namespace {

bool HasJoin(const Sentence& sentence, int from, int to) {
  for (int i = from; i < to; ++i) {
    if (sentence.Is(i, {"and", "or", ",", "nor", "&", "/"})) return true;
  }
  return false;
}

// Words whose number does not show, or that go with either form.
bool IsFreeOfNumber(const Findings& findings, const std::string& word) {
  return findings.List("either_number").count(word) != 0;
}

bool MayStartSubject(const Sentence& sentence, int i) {
  if (sentence.StartsClause(i)) return !sentence.Is(i - 1, {"and", "or", "as"});
  return i == 1 && sentence.TagAt(0) == Tag::RB;
}

bool IsSureVerb(const Sentence& sentence, int verb) {
  if (sentence.Is(verb, {"are", "were", "have", "do", "is", "was", "has", "does"})) return true;
  return sentence.Mostly(verb, kVerbPart);
}

enum class Number { kUnknown, kSingular, kPlural };

// The number that the learner means: "every students" is one, "two student" are more.
Number MeantNumber(const Sentence& sentence, const Findings& findings, int first, int head) {
  const std::string& word = sentence.Lower(head);
  const bool madePlural =
      word.ends_with('s') && findings.List("uncounted").count(word.substr(0, word.size() - 1)) != 0;
  if (madePlural && sentence.At(head).word == nullptr) return Number::kSingular;
  const bool oneMeant = sentence.Is(first, {"every", "each", "a", "an", "another"});
  const bool manyMeant =
      sentence.Is(first, {"two", "three", "four", "five", "six", "many", "several", "these", "those", "few"});
  if (findings.List("plural_only").count(word) != 0) return Number::kPlural;
  if (sentence.TagAt(head) == Tag::NNS && sentence.IsPlural(head))
    return oneMeant ? Number::kSingular : Number::kPlural;
  const bool uncounted = findings.List("uncounted").count(word) != 0 && sentence.Lacks(head, kPlural);
  if (sentence.TagAt(head) == Tag::NN && (sentence.IsSingular(head) || uncounted))
    return manyMeant ? Number::kPlural : Number::kSingular;
  return Number::kUnknown;
}

bool IsSubjunctive(const Sentence& sentence, int subject, int verb) {
  return sentence.Lower(verb) == "were" && sentence.AnyBefore(subject, {"if", "wish", "though", "as"});
}

void CheckPluralSubject(const Sentence& sentence, Findings& findings, int first, int head, int verb) {
  // "Two hours is enough": an amount may be one thing.
  const bool amount = sentence.TagAt(first) == Tag::CD && sentence.IsPlural(head);
  if (!amount && sentence.Lower(first) != "one" && IsThirdPresent(sentence, verb)) {
    findings.Add("noun-agreement", verb, verb, {PluralVerbOf(sentence, verb)});
  }
}

void CheckSingularSubject(const Sentence& sentence, Findings& findings, int first, int verb) {
  const Tag tag = sentence.TagAt(first);
  const bool determined = tag == Tag::DT || tag == Tag::PRPS || IsAdjective(tag);
  const bool open =
      sentence.Is(first, {"some", "all", "these", "no", "those", "any", "such", "both", "many", "few"});
  const bool questioned =
      sentence.Is(verb, {"do", "have", "are", "were"}) && sentence.TagAt(verb + 1) == Tag::PRP;
  if (!determined || open || questioned || !IsPlainPresent(sentence, verb) || !IsSureVerb(sentence, verb))
    return;
  if (TakesBareVerb(sentence, first) || IsSubjunctive(sentence, first, verb)) return;
  findings.Add("noun-agreement", verb, verb, {ThirdPersonOf(sentence, verb)});
}

void CheckSubjectAt(const Sentence& sentence, Findings& findings, int i) {
  if (!MayStartSubject(sentence, i)) return;
  const NounPhrase phrase = ReadNounPhrase(sentence, i);
  if (phrase.head < 0 || IsFreeOfNumber(findings, sentence.Lower(phrase.head))) return;
  const int verb = SkipAdverbs(sentence, SkipPrepositions(sentence, phrase.end));
  if (HasJoin(sentence, i, verb) || sentence.IsName(phrase.head)) return;
  const Number number = MeantNumber(sentence, findings, i, phrase.head);
  if (number == Number::kPlural) CheckPluralSubject(sentence, findings, i, phrase.head, verb);
  if (number == Number::kSingular) CheckSingularSubject(sentence, findings, i, verb);
}

void CheckPluralWord(const Sentence& sentence, Findings& findings, int i) {
  static const WordSet kPluralWords = {"people", "children", "men",     "women",   "police",
                                       "these",  "those",    "parents", "students"};
  if (kPluralWords.count(sentence.Lower(i)) == 0 || sentence.Is(i - 1, {"every", "each", "another"})) return;
  const int verb = SkipAdverbs(sentence, i + 1);
  if (!IsThirdPresent(sentence, verb)) return;
  for (int at = std::max(0, i - 4); at < i; ++at) {
    const bool governs = sentence.TagAt(at) == Tag::IN || IsVerb(sentence.TagAt(at)) ||
                         sentence.Is(at, {"one", "to", "and", "who", "which"});
    if (governs && !sentence.Is(at, {"because", "if", "that", "so", "when", "but", "think", "believe"}))
      return;
  }
  findings.Add("noun-agreement", verb, verb, {PluralVerbOf(sentence, verb)});
}

}  // namespace

void CheckNounAgreement(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckSubjectAt(sentence, findings, i);
    CheckPluralWord(sentence, findings, i);
  }
}

}  // namespace tolvex
