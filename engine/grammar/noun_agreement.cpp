// Noun phrases at the start of a clause and their verbs: "the price of the books are".
#include <algorithm>

#include "engine/grammar/check.h"

namespace tolvex {
namespace {

enum class Number { kUnknown, kSingular, kPlural };

class NounAgreementCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 0; i < Size(); ++i) {
      if (MayStartSubject(i)) CheckSubject(i);
      if (In(i, "plural_people")) CheckPluralPeople(i);
    }
  }

 private:
  bool MayStartSubject(int i) const {
    if (StartsClause(i)) return !Is(i - 1, {"and", "or", "as"});
    return i == 1 && TagAt(0) == Tag::RB;
  }

  void CheckSubject(int first) {
    const NounPhrase phrase = NounPhraseAt(first);
    if (phrase.head < 0 || In(phrase.head, "either_number") || IsName(phrase.head)) return;
    if (IsAllThat(first) || IsAllThat(first - 2)) return;
    const int verb = SkipAdverbs(SkipPrepositions(phrase.end));
    if (IsJoined(first, verb)) return;
    const Number number = MeantNumber(first, phrase.head);
    if (number == Number::kPlural) CheckPlural(first, phrase.head, verb);
    if (number == Number::kSingular) CheckSingular(first, verb);
  }

  // "All that matters is …": a pronoun with its clause.
  bool IsAllThat(int first) const { return Lower(first) == "all" && Lower(first + 1) == "that"; }

  // "The singer / writer are old."
  bool IsJoined(int from, int to) const { return AnyOf(from, to, {"and", "or", ",", "nor", "&", "/"}); }

  // The number that the learner means: "every students" is one, "two student" are more.
  Number MeantNumber(int first, int head) const {
    const Tag tag = TagAt(head);
    if (IsPluralOfUncounted(head)) return Number::kSingular;
    if (In(head, "plural_only")) return Number::kPlural;
    if (tag == Tag::NNS && IsPlural(head)) return MeansOne(first) ? Number::kSingular : Number::kPlural;
    const bool uncounted = In(head, "uncounted") && Lacks(head, kPlural);
    if (tag == Tag::NN && (IsSingular(head) || uncounted))
      return In(first, "one_or_more_of") && !IsManyA(first) ? Number::kPlural : Number::kSingular;
    return Number::kUnknown;
  }

  // "Many a sailor has drowned."
  bool IsManyA(int first) const { return Lower(first) == "many" && IsArticleA(first + 1); }

  // "The informations are useful."
  bool IsPluralOfUncounted(int head) const {
    const std::string& word = Lower(head);
    return At(head).word == nullptr && word.ends_with('s') &&
           lists_["uncounted"].contains(word.substr(0, word.size() - 1));
  }

  // "Every students", "an apples"
  bool MeansOne(int first) const { return Is(first, {"every", "each", "a", "an", "another"}); }

  void CheckPlural(int first, int head, int verb) {
    if (IsAmount(first, head) || Lower(first) == "one" || !IsThirdPresent(verb)) return;
    Replace("noun-agreement", verb, PluralVerbOf(verb));
  }

  // "Two hours is enough": an amount may be one thing.
  bool IsAmount(int first, int head) const { return TagAt(first) == Tag::CD && IsPlural(head); }

  void CheckSingular(int first, int verb) {
    if (!IsDetermined(first) || !IsPlainPresent(verb) || !IsSureVerb(verb)) return;
    if (IsOfQuestion(verb) || TakesBareVerb(first) || IsUnreal(first, verb)) return;
    Replace("noun-agreement", verb, ThirdPersonOf(verb));
  }

  bool IsDetermined(int first) const {
    const Tag tag = TagAt(first);
    return (IsDeterminer(tag) || IsAdjective(tag)) && !In(first, "determiners_of_many");
  }

  bool IsSureVerb(int verb) const { return In(verb, "bare_auxiliaries") || Mostly(verb, kVerbPart); }

  // "This book have you read?"
  bool IsOfQuestion(int verb) const {
    return Is(verb, {"do", "have", "are", "were"}) && TagAt(verb + 1) == Tag::PRP;
  }

  // "If the house were bigger, we would stay."
  bool IsUnreal(int subject, int verb) const {
    return Lower(verb) == "were" && AnyOf(0, subject, {"if", "wish", "though", "as"});
  }

  // "My parents is doctors"; a plural after "every" has a check of its own.
  void CheckPluralPeople(int i) {
    const int verb = SkipAdverbs(i + 1);
    if (Is(i - 1, {"every", "each", "another"}) || !IsThirdPresent(verb) || IsPartOfSubject(i)) return;
    Replace("noun-agreement", verb, PluralVerbOf(verb));
  }

  // "One of the students is ill", "Meeting people is fun."
  bool IsPartOfSubject(int noun) const {
    for (int i = std::max(0, noun - 4); i < noun; ++i) {
      const Tag tag = TagAt(i);
      const bool governs = tag == Tag::IN || IsVerb(tag) || Is(i, {"one", "to", "and", "who", "which"});
      if (governs && !In(i, "plain_openers")) return true;
    }
    return false;
  }
};

}  // namespace

void CheckNounAgreement(const Phrases& phrases, Findings& findings) {
  NounAgreementCheck(phrases, findings).Run();
}

}  // namespace tolvex
