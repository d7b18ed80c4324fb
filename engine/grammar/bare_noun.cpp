// Counted nouns without a determiner: "buy umbrella", "drove me to airport"; and "a five-days trip".
#include "engine/grammar/check.h"
#include "engine/rules/fix.h"

namespace tolvex {
namespace {

class BareNounCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 1; i < Size(); ++i) {
      CheckCompoundNumber(i);
      CheckKnownPlace(i);
      if (TagAt(i) == Tag::NN) CheckSingleThing(i);
    }
  }

 private:
  // "He bought big red umbrella", "They live in small village"
  void CheckSingleThing(int noun) {
    const int first = PhraseStart(noun);
    const bool described = IsDescribedInPhrase(first, noun);
    if (!described && !In(noun, "single_things")) return;
    if (IsOnlyOne(first) || !(described || IsGiven(first, noun) || IsAlone(first, noun))) return;
    Replace("single-thing-a", first, noun, WithArticle(*this, first, noun));
  }

  // Where the words that belong to the noun begin: "big red umbrella".
  int PhraseStart(int noun) const {
    int first = noun;
    while (TagAt(first - 1) == Tag::JJ || Is(first - 1, {"new", "old", "very"})) --first;
    return first;
  }

  // "I missed last train", "We saw first movie."
  bool IsOnlyOne(int first) const {
    return Has(first, kSuperlative) || Is(first, {"same", "first", "next", "last"});
  }

  // "She gave me ticket."
  bool IsGiven(int first, int noun) const {
    const int pronoun = first - 1;
    return Is(pronoun, {"me", "him", "her", "us", "them", "you"}) && TagAt(pronoun) == Tag::PRP &&
           In(pronoun - 1, "giving_verbs") && !IsNoun(TagAt(noun + 1));
  }

  // "I need umbrella", "There is dog in the garden", "He came with friend."
  bool IsAlone(int first, int noun) const {
    if (IsPartOfCompound(noun) || IsName(noun) || IsName(noun - 1) || IsPaired(first, noun)) return false;
    return IsVerbBefore(first) || IsShownBefore(first) || Is(first - 1, {"with", "into", "near", "about"});
  }

  // "He read movie reviews", "We took bus 307."
  bool IsPartOfCompound(int noun) const {
    const Tag next = TagAt(noun + 1);
    return IsNoun(next) || next == Tag::CD || next == Tag::POS || next == Tag::HYPH;
  }

  // "He went from door to door", "They have table and chair": pairs go without an article.
  bool IsPaired(int first, int noun) const {
    if (In(first - 1, "before_pair") || In(noun + 1, "after_pair")) return true;
    for (int i = 0; i < Size(); ++i) {
      if (i != noun && Lower(i) == Lower(noun)) return true;
    }
    return false;
  }

  bool IsVerbBefore(int first) const {
    const Tag before = TagAt(first - 1);
    return IsVerb(before) && before != Tag::VBN && !IsModifierBefore(first) && Has(first - 1, kAnyVerbForm) &&
           Lemma(first - 1) != "be";
  }

  // "The missing dog came back."
  bool IsModifierBefore(int first) const {
    return TagAt(first - 1) == Tag::VBG && IsDeterminer(TagAt(first - 2));
  }

  // "There is dog", "This is picture"; after other subjects, "is" shows nothing.
  bool IsShownBefore(int first) const {
    return Is(first - 1, {"is", "was", "'s"}) &&
           (TagAt(first - 2) == Tag::EX || Is(first - 2, {"this", "that", "it", "there"}));
  }

  // "in big hospital", "from small village": an adjective makes a place or thing one of many.
  bool IsDescribedInPhrase(int first, int noun) const {
    return first != noun && IsCounted(noun) && In(first - 1, "place_prepositions") && !IsFixedPhrase(first) &&
           !IsStageOfLife(noun) && !IsPaired(first, noun) && !IsNoun(TagAt(noun + 1)) && !IsName(first) &&
           !IsName(noun);
  }

  bool IsCounted(int noun) const {
    return In(noun, "known_places") || In(noun, "single_things") || In(noun, "count_nouns") ||
           In(noun, "towns_and_homes");
  }

  // "They live in same street", "He moved to other city."
  bool IsFixedPhrase(int first) const { return In(first, "fixed_adjectives"); }

  // "He is in primary school."
  bool IsStageOfLife(int noun) const { return In(noun, "stages_of_life"); }

  // "drove me to airport"
  void CheckKnownPlace(int noun) {
    if (!In(noun, "known_places") || !Is(noun - 1, {"to", "at", "into"})) return;
    const Tag next = TagAt(noun + 1);
    if (IsName(noun) || IsNoun(next) || next == Tag::CD || next == Tag::POS || IsPaired(noun, noun)) return;
    Replace("known-place-the", noun, "the " + At(noun).text);
  }

  // "a ten-years-old girl", "a five-days trip": one token with a plural in the middle or at the end.
  void CheckCompoundNumber(int i) {
    const std::string& word = At(i).text;
    if (!In(i - 1, "before_unit")) return;
    for (const std::string_view unit :
         {"years", "days", "hours", "minutes", "weeks", "months", "miles", "dollars"}) {
      const auto at = word.find("-" + std::string(unit));
      if (at == std::string::npos) continue;
      const std::size_t last = at + unit.size();
      const bool whole = last + 1 == word.size() || word[last + 1] == '-';
      if (!whole || (last + 1 == word.size() && !IsNoun(TagAt(i + 1)))) continue;
      Replace("year-old", i, word.substr(0, last) + word.substr(last + 1));
      return;
    }
  }
};

}  // namespace

void CheckBareNoun(const Phrases& phrases, Findings& findings) { BareNounCheck(phrases, findings).Run(); }

}  // namespace tolvex
