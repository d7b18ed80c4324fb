// Subject and verb: pronouns, noun phrases at the start of a clause, "there is".
#include <algorithm>

#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

int SkipAdverbs(const Sentence& sentence, int i) {
  static const WordSet kAdverbs = {"also", "always", "often", "usually",   "never", "really",
                                   "just", "still",  "only",  "sometimes", "even",  "now",
                                   "then", "both",   "all",   "actually"};
  while (sentence.TagAt(i) == Tag::RB && sentence.Lower(i) != "n't" && sentence.Lower(i) != "not") ++i;
  while (kAdverbs.count(sentence.Lower(i)) != 0 && sentence.TagAt(i) != Tag::PRP) ++i;
  return i;
}

/// What the subject wants in place of a present verb that does not agree; empty when it agrees.
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
  return tagged && sentence.Has(i, kBase);
}

bool IsThirdPresent(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"is", "was", "has", "does"})) return true;
  return sentence.TagAt(i) == Tag::VBZ && sentence.Has(i, kThird) && sentence.Lower(i)[0] != '\'';
}

// "make it work", "suggest he go", "did she say": the verb has no subject of its own or is a subjunctive.
bool TakesBareVerb(const Sentence& sentence, int subject) {
  static const WordSet kBefore = {
      "let",  "make",    "makes", "made",  "making", "help", "helps",  "helped", "helping", "see",
      "saw",  "watch",   "hear",  "heard", "have",   "had",  "having", "did",    "do",      "does",
      "can",  "could",   "will",  "would", "should", "may",  "might",  "must",   "shall",   "feel",
      "lets", "letting", "seen",  "has",   "n't",    "not",  "get",    "rather", "lest",    "whether"};
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

// A noun phrase from i on: its head, and where it ends.
struct NounPhrase {
  int head = -1;
  int end = 0;
};

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

int SkipPrepositions(const Sentence& sentence, int i) {
  while (sentence.Is(i, {"of", "in", "on", "for", "with", "between", "from", "about", "to", "at"})) {
    const NounPhrase inner = ReadNounPhrase(sentence, i + 1);
    if (inner.head < 0) break;
    i = inner.end;
  }
  return i;
}

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

void CheckSubjectAt(const Sentence& sentence, Findings& findings, int i) {
  if (!MayStartSubject(sentence, i)) return;
  const NounPhrase phrase = ReadNounPhrase(sentence, i);
  if (phrase.head < 0 || IsFreeOfNumber(findings, sentence.Lower(phrase.head))) return;
  const int verb = SkipAdverbs(sentence, SkipPrepositions(sentence, phrase.end));
  if (HasJoin(sentence, i, verb) || sentence.IsName(phrase.head)) return;
  const bool determined =
      sentence.TagAt(i) == Tag::DT || sentence.TagAt(i) == Tag::PRPS || IsAdjective(sentence.TagAt(i));
  const bool plural = sentence.TagAt(phrase.head) == Tag::NNS && sentence.IsPlural(phrase.head);
  const bool singular = sentence.TagAt(phrase.head) == Tag::NN && sentence.IsSingular(phrase.head);
  if (plural && IsThirdPresent(sentence, verb) && !sentence.IsPlural(verb) && sentence.Lower(i) != "one" &&
      sentence.TagAt(i) != Tag::CD) {
    findings.Add("noun-agreement", verb, verb, {PluralVerbOf(sentence, verb)});
  }
  const bool openDeterminer =
      sentence.Is(i, {"some", "all", "these", "no", "those", "any", "such", "both", "many", "few"});
  const bool questioned = sentence.TagAt(verb + 1) == Tag::PRP;
  if (singular && determined && !openDeterminer && !questioned && IsPlainPresent(sentence, verb) &&
      IsSureVerb(sentence, verb) && !TakesBareVerb(sentence, i) &&
      !(sentence.Lower(verb) == "were" && sentence.AnyBefore(i, {"if", "wish", "though", "as"}))) {
    findings.Add("noun-agreement", verb, verb, {ThirdPersonOf(sentence, verb)});
  }
}

// "Two student is here": a counted noun in the singular has a plural verb all the same; the noun is reported
// by the number check.

// "Everyone have", "each of them have": handled by pronouns; "people is" has no plural ending to see.
void CheckPluralWord(const Sentence& sentence, Findings& findings, int i) {
  static const WordSet kPluralWords = {"people", "children", "men",     "women",   "police",
                                       "these",  "those",    "parents", "students"};
  if (kPluralWords.count(sentence.Lower(i)) == 0) return;
  const int verb = SkipAdverbs(sentence, i + 1);
  if (!IsThirdPresent(sentence, verb) || sentence.IsPlural(verb)) return;
  for (int at = std::max(0, i - 4); at < i; ++at) {
    const bool governs = sentence.TagAt(at) == Tag::IN || IsVerb(sentence.TagAt(at)) ||
                         sentence.Is(at, {"one", "to", "and", "who", "which"});
    if (governs && !sentence.Is(at, {"because", "if", "that", "so", "when", "but", "think", "believe"}))
      return;
  }
  findings.Add("noun-agreement", verb, verb, {PluralVerbOf(sentence, verb)});
}

bool LooksPlural(const Sentence& sentence, int i) {
  if (sentence.Is(i,
                  {"many", "several", "few", "two", "three", "four", "five", "lots", "various", "numerous"}))
    return true;
  if (sentence.Lower(i) == "some" || IsAdjective(sentence.TagAt(i))) {
    return sentence.TagAt(i + 1) == Tag::NNS && sentence.IsPlural(i + 1);
  }
  if (sentence.Lower(i) == "a" && sentence.Lower(i + 1) == "few") return true;
  if (sentence.Lower(i) == "a" && sentence.Lower(i + 1) == "lot" && sentence.Lower(i + 2) == "of") {
    return sentence.Lower(i + 3) == "people" || sentence.TagAt(i + 3) == Tag::NNS ||
           (IsAdjective(sentence.TagAt(i + 3)) && sentence.TagAt(i + 4) == Tag::NNS);
  }
  return sentence.TagAt(i) == Tag::NNS && sentence.IsPlural(i);
}

bool LooksSingular(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"another", "much"})) return true;
  if (!sentence.Is(i, {"a", "an"})) return false;
  static const WordSet kManyMeant = {"lot",     "few",     "number",  "couple",      "great",    "large",
                                     "variety", "huge",    "wide",    "small",       "range",    "series",
                                     "million", "good",    "hundred", "significant", "thousand", "dozen",
                                     "growing", "handful", "limited"};
  return kManyMeant.count(sentence.Lower(i + 1)) == 0;
}

}  // namespace

void CheckPronounAgreement(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckThirdPersonPronoun(sentence, findings, i);
    CheckPluralPronoun(sentence, findings, i);
  }
}

void CheckNounAgreement(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckSubjectAt(sentence, findings, i);
    CheckPluralWord(sentence, findings, i);
  }
}

void CheckThereBe(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    if (sentence.Lower(i) != "there") continue;
    const int next = sentence.TagAt(i + 2) == Tag::RB && !sentence.Is(i + 2, {"much"}) ? i + 3 : i + 2;
    const std::string& be = sentence.Lower(i + 1);
    if ((be == "is" || be == "was" || be == "'s") && LooksPlural(sentence, next)) {
      findings.Add("there-be-plural", i + 1, i + 1, {be == "was" ? "were" : be == "is" ? "are" : " are"});
    }
    if ((be == "are" || be == "were") && LooksSingular(sentence, next)) {
      findings.Add("there-be-singular", i + 1, i + 1, {be == "are" ? "is" : "was"});
    }
  }
}

}  // namespace tolvex
