// Subjects that are more than a noun before its verb: joined ones, ones with a clause or a phrase between.
#include "engine/grammar/checks.h"
#include "engine/grammar/finite_verbs.h"
#include "engine/grammar/noun_phrase.h"
#include "engine/grammar/subject_verb.h"

namespace tolvex {
namespace {

void MakePlural(const Sentence& sentence, Findings& findings, int verb) {
  const std::string better = sentence.Lower(verb) == "am" ? "are" : PluralVerbOf(sentence, verb);
  findings.Add("long-subject", verb, verb, {better});
}

void MakeSingular(const Sentence& sentence, Findings& findings, int verb) {
  const std::string better = ThirdPersonOf(sentence, verb);
  if (!better.empty()) findings.Add("long-subject", verb, verb, {better});
}

bool IsBareVerb(const Sentence& sentence, int i) {
  return IsPlainPresent(sentence, i) ||
         (IsNoun(sentence.TagAt(i)) && sentence.Has(i, kBase) && sentence.Lacks(i, kPast | kPlural));
}

bool IsSingularHead(const Sentence& sentence, const Findings& findings, int head) {
  const bool uncounted = findings.List("uncounted").count(sentence.Lower(head)) != 0;
  return sentence.TagAt(head) == Tag::NN && (sentence.IsSingular(head) || uncounted) &&
         findings.List("either_number").count(sentence.Lower(head)) == 0;
}

bool IsPluralHead(const Sentence& sentence, const Findings& findings, int head) {
  if (findings.List("plural_only").count(sentence.Lower(head)) != 0) return true;
  return sentence.TagAt(head) == Tag::NNS && sentence.IsPlural(head) &&
         findings.List("either_number").count(sentence.Lower(head)) == 0;
}

void AgreeWith(const Sentence& sentence, Findings& findings, int head, int verb) {
  if (IsPluralHead(sentence, findings, head) && IsThirdPresent(sentence, verb))
    MakePlural(sentence, findings, verb);
  else if (IsSingularHead(sentence, findings, head) && IsPlainPresent(sentence, verb))
    MakeSingular(sentence, findings, verb);
}

int AdditionLength(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"together", "along"}) && sentence.Lower(i + 1) == "with") return 2;
  if (sentence.Lower(i) == "as" && sentence.Lower(i + 1) == "well" && sentence.Lower(i + 2) == "as") return 3;
  if (sentence.Lower(i) == "in" && sentence.Lower(i + 1) == "addition") return 3;
  return sentence.Is(i, {"including", "besides", "like"}) ? 1 : 0;
}

// "The teacher, together with her students, are …"
void CheckAddition(const Sentence& sentence, Findings& findings, const NounPhrase& subject) {
  const bool comma = sentence.At(subject.end).text == ",";
  const int start = subject.end + (comma ? 1 : 0);
  const int length = AdditionLength(sentence, start);
  if (length == 0 || (sentence.Lower(start) == "like" && !comma)) return;
  const NounPhrase added = ReadNounPhrase(sentence, start + length);
  if (added.head < 0) return;
  int verb = SkipPrepositions(sentence, added.end);
  if (sentence.At(verb).text == ",") ++verb;
  AgreeWith(sentence, findings, subject.head, SkipAdverbs(sentence, verb));
}

bool Breaks(const Sentence& sentence, int from, int to, bool commaToo) {
  for (int i = from; i < to; ++i) {
    if (commaToo && sentence.At(i).text == ",") return true;
    if (sentence.Is(
            i, {"and",      "or",    "but", "that",  "because", "if",      "when",  "what",  "who", "which",
                "where",    "than",  "how", "while", "so",      "before",  "after", "until", "as",  "though",
                "although", "whose", "\"",  "why",   "since",   "whether", ":",     ";",     "-"}))
      return true;
  }
  return false;
}

bool IsBeOrHave(const Sentence& sentence, int i) {
  return sentence.Is(i, {"is", "are", "was", "were", "has", "have"});
}

// "The books that I bought yesterday was …", "The people who live there has …"
void CheckClauseBetween(const Sentence& sentence, Findings& findings, const NounPhrase& subject) {
  const bool comma = sentence.At(subject.end).text == ",";
  const int relative = subject.end + (comma ? 1 : 0);
  const bool named = sentence.Is(relative, {"who", "which", "that"});
  const bool contact = !comma && sentence.Is(relative, {"i", "he", "she", "we", "they", "you"});
  if (!named && !contact) return;
  const auto verbs = FiniteVerbs(sentence);
  const FiniteVerb inner = FirstIn(verbs, relative + 1, sentence.Size());
  const FiniteVerb outer = inner.at < 0 ? inner : FirstIn(verbs, inner.at + 1, sentence.Size());
  if (outer.at < 0 || Breaks(sentence, relative + 1, outer.at, !comma)) return;
  if (contact && (inner.tense == Tense::kModal ||
                  sentence.Is(inner.at, {"think", "said", "say", "believe", "know", "hope", "thought"})))
    return;
  const bool reported = sentence.Is(inner.at, {"said", "says", "think", "thinks", "thought", "believe",
                                               "means", "mean", "shows", "know", "say", "showed"});
  if (!reported && (named || IsBeOrHave(sentence, outer.at)) && IsBeOrHave(sentence, outer.at))
    AgreeWith(sentence, findings, subject.head, outer.at);
}

// "My sister, who live in London, is …"
void CheckWho(const Sentence& sentence, Findings& findings, const NounPhrase& subject) {
  const bool comma = sentence.At(subject.end).text == ",";
  const int who = subject.end + (comma ? 1 : 0);
  if (!comma || !sentence.Is(who, {"who", "which"})) return;
  const int verb = SkipAdverbs(sentence, who + 1);
  const bool governed = sentence.TagAt(verb) == Tag::MD || verb == who;
  if (governed) return;
  if (IsSingularHead(sentence, findings, subject.head) && IsBareVerb(sentence, verb) &&
      sentence.Lower(verb) != "were")
    MakeSingular(sentence, findings, verb);
  else if (IsPluralHead(sentence, findings, subject.head) && IsThirdPresent(sentence, verb))
    MakePlural(sentence, findings, verb);
}

void CheckExtended(const Sentence& sentence, Findings& findings) {
  const NounPhrase plain = ReadNounPhrase(sentence, 0);
  if (plain.head < 0 || sentence.Is(0, {"one", "each", "either", "neither", "there"})) return;
  if (sentence.Is(0, {"every", "each"}) && sentence.TagAt(plain.head) == Tag::NNS) return;
  CheckAddition(sentence, findings, {plain.head, SkipPrepositions(sentence, plain.end)});
  CheckClauseBetween(sentence, findings, plain);
  CheckWho(sentence, findings, plain);
}

// "One of the windows in the kitchen are …"
void CheckOneOfMany(const Sentence& sentence, Findings& findings, int i) {
  const bool subject = sentence.StartsClause(i) && !sentence.Is(i - 1, {"and", "or"});
  if (!subject || !sentence.Is(i, {"one", "each", "either"}) || sentence.Lower(i + 1) != "of") return;
  const NounPhrase many = ReadNounPhrase(sentence, i + 2);
  if (many.head < 0) return;
  const int end = SkipInfinitive(sentence, SkipPrepositions(sentence, many.end));
  const int verb = SkipAdverbs(sentence, SkipPrepositions(sentence, end));
  if (verb == many.end && sentence.Lower(i) != "each" && !IsBareVerb(sentence, verb)) return;
  const bool joined = Breaks(sentence, i, verb, true);
  if (!joined && IsBareVerb(sentence, verb) && sentence.TagAt(verb) != Tag::NN)
    MakeSingular(sentence, findings, verb);
}

// "Both of my parents works", "Both plans has"
void CheckBoth(const Sentence& sentence, Findings& findings) {
  if (sentence.Lower(0) != "both") return;
  const NounPhrase two = ReadNounPhrase(sentence, sentence.Lower(1) == "of" ? 2 : 1);
  int verb = -1;
  if (sentence.Lower(1) == "of" && sentence.Is(2, {"us", "them", "you"})) verb = SkipAdverbs(sentence, 3);
  if (two.head >= 0 && sentence.TagAt(two.head) == Tag::NNS)
    verb = SkipAdverbs(sentence, SkipPrepositions(sentence, two.end));
  const bool nounLike = verb > 0 && sentence.TagAt(verb) == Tag::NNS && sentence.Has(verb, kThird);
  if (verb > 0 && (IsThirdPresent(sentence, verb) || nounLike)) MakePlural(sentence, findings, verb);
}

// "A lot of my classmates takes", "Most of the shops is"
void CheckQuantityOf(const Sentence& sentence, Findings& findings) {
  const int of = sentence.Lower(0) == "a" ? 2 : 1;
  const bool quantity =
      sentence.Is(of - 1, {"lot", "lots", "most", "some", "many", "all", "few", "half", "several", "plenty"});
  if (!quantity || sentence.Lower(of) != "of") return;
  const NounPhrase many = ReadNounPhrase(sentence, of + 1);
  const bool people = many.head >= 0 && sentence.Lower(many.head) == "people";
  if (many.head < 0) return;
  const int verb = SkipAdverbs(sentence, SkipPrepositions(sentence, many.end));
  const bool plural = people || IsPluralHead(sentence, findings, many.head);
  if (plural && IsThirdPresent(sentence, verb)) MakePlural(sentence, findings, verb);
  const bool uncounted = sentence.TagAt(many.head) == Tag::NN &&
                         findings.List("uncounted").count(sentence.Lower(many.head)) != 0;
  if (uncounted && IsBareVerb(sentence, verb)) MakeSingular(sentence, findings, verb);
}

// One of two joined subjects: a pronoun, a name, a determined noun. Its end, or -1.
int PartOfJoinedSubject(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"i", "he", "she", "you", "we", "they"})) return i + 1;
  if (sentence.TagAt(i) == Tag::NNP && sentence.TagAt(i + 1) != Tag::NNP) return i + 1;
  const bool determined = sentence.Is(i, {"my", "his", "her", "our", "their", "your", "the", "this", "that"});
  if (!determined) return -1;
  const NounPhrase phrase = ReadNounPhrase(sentence, i);
  return phrase.head < 0 ? -1 : phrase.end;
}

bool IsKin(const Sentence& sentence, int i) {
  return sentence.Is(i, {"father", "mother", "brother", "sister", "aunt", "uncle", "dad", "mom", "son",
                         "daughter", "grandfather", "grandmother", "grandpa", "grandma", "cousin"});
}

// "He and his wife goes", "My father and my uncle was"
void CheckJoinedSubject(const Sentence& sentence, Findings& findings, int i) {
  const int join = PartOfJoinedSubject(sentence, i);
  if (join < 0 || sentence.Lower(join) != "and") return;
  const bool family = IsKin(sentence, join - 1) && IsKin(sentence, join + 1);
  const int end = family ? join + 2 : PartOfJoinedSubject(sentence, join + 1);
  if (end < 0 || sentence.At(end).text == ",") return;
  const int verb = SkipAdverbs(sentence, end);
  const bool nounLike = sentence.TagAt(verb) == Tag::NNS && sentence.Has(verb, kThird) && verb == end;
  const bool am = sentence.Lower(verb) == "am";
  if (IsThirdPresent(sentence, verb) || nounLike || am) MakePlural(sentence, findings, verb);
}

// "Neither my brother nor my sister want": the nearer one counts.
void CheckNorSubject(const Sentence& sentence, Findings& findings) {
  if (!sentence.Is(0, {"neither", "either"})) return;
  int nor = 1;
  while (nor < sentence.Size() && !sentence.Is(nor, {"nor", "or"})) ++nor;
  if (nor == sentence.Size() || CountIn(FiniteVerbs(sentence), 0, nor) != 0) return;
  const NounPhrase nearer = ReadNounPhrase(sentence, nor + 1);
  const bool pronoun = sentence.Is(nor + 1, {"he", "she"});
  if (nearer.head < 0 && !pronoun) return;
  const int verb = SkipAdverbs(sentence, pronoun ? nor + 2 : SkipPrepositions(sentence, nearer.end));
  if (pronoun && IsPlainPresent(sentence, verb)) MakeSingular(sentence, findings, verb);
  if (!pronoun) AgreeWith(sentence, findings, nearer.head, verb);
}

// "Playing video games all night are …"
void CheckGerundSubject(const Sentence& sentence, Findings& findings) {
  static const WordSet kDone = {"playing",  "reading",  "eating",    "watching", "doing",   "learning",
                                "studying", "speaking", "using",     "making",   "taking",  "having",
                                "getting",  "keeping",  "buying",    "drinking", "smoking", "writing",
                                "sleeping", "staying",  "listening", "cooking",  "telling", "finding"};
  static const WordSet kNoSubject = {"according", "including",  "regarding",   "concerning",
                                     "during",    "following",  "considering", "nothing",
                                     "something", "everything", "anything",    "being"};
  if (sentence.TagAt(0) != Tag::VBG && kDone.count(sentence.Lower(0)) == 0) return;
  if (kNoSubject.count(sentence.Lower(0)) != 0) return;
  const bool modifies = IsNoun(sentence.TagAt(1)) || IsAdjective(sentence.TagAt(1));
  if (modifies && kDone.count(sentence.Lower(0)) == 0) return;
  const FiniteVerb verb = FirstIn(FiniteVerbs(sentence), 1, sentence.Size());
  if (verb.at < 2 || Breaks(sentence, 1, verb.at, true) || sentence.Lower(verb.at) == "am") return;
  const bool subjectBetween = sentence.TagAt(verb.at - 1) == Tag::PRP && verb.at > 2 &&
                              !sentence.Is(verb.at - 1, {"it", "them", "him", "her", "you", "me", "us"});
  if (!subjectBetween && !TakesBareVerb(sentence, verb.at - 1) && IsPlainPresent(sentence, verb.at))
    MakeSingular(sentence, findings, verb.at);
}

// "Here is the documents", "Where is my glasses?"
void CheckInverted(const Sentence& sentence, Findings& findings) {
  if (!sentence.Is(0, {"here", "where", "how", "who", "why", "when"})) return;
  const bool singular = sentence.Is(1, {"is", "was", "comes", "'s"});
  if (!singular && !sentence.Is(1, {"are", "were"})) return;
  const NounPhrase phrase = ReadNounPhrase(sentence, 2);
  if (phrase.head < 0 || sentence.Lower(phrase.end) == "and" || sentence.TagAt(2) == Tag::CD) return;
  const bool people = sentence.Lower(0) == "who";
  if (singular && IsPluralHead(sentence, findings, phrase.head) && !people) {
    const std::string better = PluralVerbOf(sentence, 1);
    findings.Add("long-subject", 1, 1, {sentence.Lower(1) == "'s" ? " are" : better});
  } else if (!singular && IsSingularHead(sentence, findings, phrase.head) &&
             !IsVerb(sentence.TagAt(phrase.end)) &&
             sentence.Is(2, {"my", "your", "his", "her", "our", "their", "the", "a", "this"})) {
    findings.Add("long-subject", 1, 1, {ThirdPersonOf(sentence, 1)});
  }
}

}  // namespace

void CheckLongSubject(const Sentence& sentence, Findings& findings) {
  CheckExtended(sentence, findings);
  CheckBoth(sentence, findings);
  CheckQuantityOf(sentence, findings);
  CheckNorSubject(sentence, findings);
  CheckGerundSubject(sentence, findings);
  CheckInverted(sentence, findings);
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckOneOfMany(sentence, findings, i);
    const bool opens = i == 0 || sentence.Is(i - 1, {",", "because", "when", "if", "that", "so"});
    if (opens) CheckJoinedSubject(sentence, findings, i);
  }
}

}  // namespace tolvex
