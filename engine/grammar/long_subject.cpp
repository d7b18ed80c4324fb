// Subjects that are more than a noun before its verb: joined ones, ones with a clause or a phrase between.
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class LongSubjectCheck : Check {
 public:
  using Check::Check;

  void Run() {
    CheckExtended();
    CheckBoth();
    CheckQuantityOf();
    CheckNor();
    CheckGerund();
    CheckInverted();
    for (int i = 0; i < Size(); ++i) {
      CheckOneOfMany(i);
      const bool opens = i == 0 || Is(i - 1, {",", "because", "when", "if", "that", "so"});
      if (opens) CheckJoined(i);
    }
  }

 private:
  void MakePlural(int verb) {
    Replace("long-subject", verb, Lower(verb) == "am" ? "are" : PluralVerbOf(verb));
  }

  void MakeSingular(int verb) { Replace("long-subject", verb, ThirdPersonOf(verb)); }

  void AgreeWith(int head, int verb) {
    if (IsPluralHead(head) && IsThirdPresent(verb))
      MakePlural(verb);
    else if (IsSingularHead(head) && IsPlainPresent(verb))
      MakeSingular(verb);
  }

  bool IsSingularHead(int head) const {
    return TagAt(head) == Tag::NN && (IsSingular(head) || In(head, "uncounted")) &&
           !In(head, "either_number");
  }

  bool IsPluralHead(int head) const {
    return In(head, "plural_only") ||
           (TagAt(head) == Tag::NNS && IsPlural(head) && !In(head, "either_number"));
  }

  // A verb without an ending, also one that the tagger mistakes for a noun.
  bool IsBareVerb(int i) const {
    return IsPlainPresent(i) || (IsNoun(TagAt(i)) && Has(i, kBase) && Lacks(i, kPast | kPlural));
  }

  bool IsVerbTakenForNoun(int i) const { return TagAt(i) == Tag::NNS && Has(i, kThird); }

  bool EndsPhrase(int from, int to) const { return AnyIn(from, to, "clause_breaks"); }
  bool HasComma(int from, int to) const { return AnyOf(from, to, {","}); }

  void CheckExtended() {
    const NounPhrase plain = NounPhraseAt(0);
    if (plain.head < 0 || IsOneOfMany() || IsEveryWithPlural(plain)) return;
    CheckAddition({plain.head, SkipPrepositions(plain.end)});
    CheckClauseBetween(plain);
    CheckWho(plain);
  }

  // "Neither boy who lives here is tall."
  bool IsOneOfMany() const { return Is(0, {"one", "each", "either", "neither", "there"}); }

  // "Every students in the class like him": the plural is the mistake.
  bool IsEveryWithPlural(const NounPhrase& subject) const {
    return Is(0, {"every", "each"}) && TagAt(subject.head) == Tag::NNS;
  }

  // "The teacher, together with her students, are …"
  void CheckAddition(const NounPhrase& subject) {
    const bool comma = IsComma(subject.end);
    const int start = subject.end + (comma ? 1 : 0);
    const int length = AdditionLength(start, comma);
    const NounPhrase added = NounPhraseAt(start + length);
    if (length == 0 || added.head < 0) return;
    const int verb = SkipPrepositions(added.end);
    AgreeWith(subject.head, SkipAdverbs(IsComma(verb) ? verb + 1 : verb));
  }

  // How many words of "as well as" begin at i; none: 0. Without a comma, "like" is a verb.
  int AdditionLength(int i, bool comma) const {
    if (Is(i, {"together", "along"}) && Lower(i + 1) == "with") return 2;
    if (Lower(i) == "as" && Lower(i + 1) == "well" && Lower(i + 2) == "as") return 3;
    if (Lower(i) == "in" && Lower(i + 1) == "addition") return 3;
    return Is(i, {"including", "besides"}) || (comma && Lower(i) == "like") ? 1 : 0;
  }

  // "The books that I bought yesterday was …", "The letter he wrote are …"
  void CheckClauseBetween(const NounPhrase& subject) {
    const bool comma = IsComma(subject.end);
    const int relative = subject.end + (comma ? 1 : 0);
    const bool contact = !comma && Is(relative, {"i", "he", "she", "we", "they", "you"});
    if (!contact && !Is(relative, {"who", "which", "that"})) return;
    const FiniteVerb inner = verbs_.First(relative + 1, Size());
    const FiniteVerb outer = inner.at < 0 ? inner : verbs_.First(inner.at + 1, Size());
    if (outer.at < 0 || !Is(outer.at, {"is", "are", "was", "were", "has", "have"})) return;
    if (EndsPhrase(relative + 1, outer.at) || (!comma && HasComma(relative + 1, outer.at))) return;
    if (IsReport(inner.at) || (contact && IsInserted(inner))) return;
    AgreeWith(subject.head, outer.at);
  }

  // "The man who said you are late left."
  bool IsReport(int verb) const { return In(verb, "reporting_verbs"); }

  // "The plan I hope is good", "The thing you can do is wait."
  bool IsInserted(const FiniteVerb& verb) const {
    return verb.tense == Tense::kModal || In(verb.at, "inserted_opinions");
  }

  // "My sister, who live in London, is …"
  void CheckWho(const NounPhrase& subject) {
    const int who = subject.end + 1;
    if (!IsComma(subject.end) || !Is(who, {"who", "which"})) return;
    const int verb = SkipAdverbs(who + 1);
    if (TagAt(verb) == Tag::MD) return;
    if (IsSingularHead(subject.head) && IsBareVerb(verb) && Lower(verb) != "were")
      MakeSingular(verb);
    else if (IsPluralHead(subject.head) && IsThirdPresent(verb))
      MakePlural(verb);
  }

  // "One of the windows in the kitchen are …"
  void CheckOneOfMany(int i) {
    const bool subject = StartsClause(i) && !Is(i - 1, {"and", "or"});
    if (!subject || !Is(i, {"one", "each", "either"}) || Lower(i + 1) != "of") return;
    const NounPhrase many = NounPhraseAt(i + 2);
    if (many.head < 0) return;
    const int end = SkipInfinitive(SkipPrepositions(many.end));
    const int verb = SkipAdverbs(SkipPrepositions(end));
    if (EndsPhrase(i, verb) || HasComma(i, verb)) return;
    if (IsBareVerb(verb) && TagAt(verb) != Tag::NN) MakeSingular(verb);
  }

  // "Both of my parents works", "Both plans has"
  void CheckBoth() {
    if (Lower(0) != "both") return;
    const bool of = Lower(1) == "of";
    const NounPhrase two = NounPhraseAt(of ? 2 : 1);
    int verb = of && Is(2, {"us", "them", "you"}) ? SkipAdverbs(3) : -1;
    if (two.head >= 0 && TagAt(two.head) == Tag::NNS) verb = SkipAdverbs(SkipPrepositions(two.end));
    if (verb > 0 && (IsThirdPresent(verb) || IsVerbTakenForNoun(verb))) MakePlural(verb);
  }

  // "A lot of my classmates takes", "Most of the shops is", "A lot of water are"
  void CheckQuantityOf() {
    const int of = Lower(0) == "a" ? 2 : 1;
    if (!In(of - 1, "quantity_words") || Lower(of) != "of") return;
    const NounPhrase many = NounPhraseAt(of + 1);
    if (many.head < 0) return;
    const int verb = SkipAdverbs(SkipPrepositions(many.end));
    const bool plural = Lower(many.head) == "people" || IsPluralHead(many.head);
    const bool uncounted = TagAt(many.head) == Tag::NN && In(many.head, "uncounted");
    if (plural && IsThirdPresent(verb)) MakePlural(verb);
    if (uncounted && IsBareVerb(verb)) MakeSingular(verb);
  }

  // "He and his wife goes", "My father and my uncle was"
  void CheckJoined(int i) {
    const int join = PartEnd(i);
    if (join < 0 || Lower(join) != "and") return;
    const bool family = In(join - 1, "family") && In(join + 1, "family");
    const int end = family ? join + 2 : PartEnd(join + 1);
    if (end < 0 || IsComma(end)) return;
    const int verb = SkipAdverbs(end);
    if (IsThirdPresent(verb) || (verb == end && IsVerbTakenForNoun(verb)) || Lower(verb) == "am")
      MakePlural(verb);
  }

  // One of two joined subjects: a pronoun, a name, a noun with a determiner. Its end, or -1.
  int PartEnd(int i) const {
    if (Is(i, {"i", "he", "she", "you", "we", "they"})) return i + 1;
    if (TagAt(i) == Tag::NNP && TagAt(i + 1) != Tag::NNP) return i + 1;
    const NounPhrase phrase = NounPhraseAt(i);
    return In(i, "owners_and_pointers") && phrase.head >= 0 ? phrase.end : -1;
  }

  // "Neither my brother nor my sister want": the nearer one counts.
  void CheckNor() {
    if (!Is(0, {"neither", "either"})) return;
    int nor = 1;
    while (nor < Size() && !Is(nor, {"nor", "or"})) ++nor;
    if (nor == Size() || verbs_.Count(0, nor) != 0) return;
    const NounPhrase nearer = NounPhraseAt(nor + 1);
    if (Is(nor + 1, {"he", "she"})) {
      const int verb = SkipAdverbs(nor + 2);
      if (IsPlainPresent(verb)) MakeSingular(verb);
    } else if (nearer.head >= 0) {
      AgreeWith(nearer.head, SkipAdverbs(SkipPrepositions(nearer.end)));
    }
  }

  // "Playing video games all night are …"
  void CheckGerund() {
    const bool listed = In(0, "gerund_subjects");
    if (!listed && (TagAt(0) != Tag::VBG || IsPreposition() || IsModifier())) return;
    const int verb = verbs_.First(1, Size()).at;
    if (verb < 2 || EndsPhrase(1, verb) || HasComma(1, verb) || Lower(verb) == "am") return;
    if (!HasSubjectOfItsOwn(verb) && !TakesBareVerb(verb - 1) && IsPlainPresent(verb)) MakeSingular(verb);
  }

  // "According to him, they are late."
  bool IsPreposition() const { return In(0, "no_gerund_subjects"); }

  // "Running shoes are cheap."
  bool IsModifier() const { return IsNoun(TagAt(1)) || IsAdjective(TagAt(1)); }

  // "Having finished they go home."
  bool HasSubjectOfItsOwn(int verb) const {
    return verb > 2 && TagAt(verb - 1) == Tag::PRP && !In(verb - 1, "object_pronouns");
  }

  // "Here is the documents", "Where are my book?"
  void CheckInverted() {
    if (!Is(0, {"here", "where", "how", "who", "why", "when"})) return;
    const NounPhrase phrase = NounPhraseAt(2);
    if (phrase.head < 0 || Lower(phrase.end) == "and" || TagAt(2) == Tag::CD) return;
    const bool contracted = Lower(1) == "'s";
    if (contracted || Is(1, {"is", "was", "comes"})) {
      if (IsPluralHead(phrase.head) && !AsksForPerson())
        Replace("long-subject", 1, contracted ? " are" : PluralVerbOf(1));
    } else if (Is(1, {"are", "were"}) && IsSingularHead(phrase.head) && !IsVerb(TagAt(phrase.end)) &&
               In(2, "one_owner")) {
      Replace("long-subject", 1, ThirdPersonOf(1));
    }
  }

  // "Who is best friends with Amy?"
  bool AsksForPerson() const { return Lower(0) == "who"; }

  const FiniteVerbs verbs_ = ReadFiniteVerbs();
};

}  // namespace

void CheckLongSubject(const Phrases& phrases, Findings& findings) {
  LongSubjectCheck(phrases, findings).Run();
}

}  // namespace tolvex
