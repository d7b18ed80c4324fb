// Counted and uncounted nouns: "two student", "a books", "every students", "many water".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class NumberCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 0; i < Size(); ++i) {
      if (In(i, "plural_quantities")) CheckQuantity(i);
      if (Lower(i) == "much") CheckMuch(i);
      if (IsSingularDeterminer(i)) CheckSingular(i);
      if (Lower(i) == "one" && Lower(i + 1) == "of") CheckOneOf(i + 2);
    }
  }

 private:
  int SkipAdjectives(int i) const {
    while (TagAt(i) == Tag::JJ && Lacks(i, kPlural)) ++i;
    return i;
  }

  // "two student cards", "a boys' school"
  bool IsPartOfCompound(int noun) const {
    return IsNoun(TagAt(noun + 1)) || Lower(noun + 1) == "-" || TagAt(noun + 1) == Tag::POS;
  }

  // "two student", "many homework"
  void CheckQuantity(int i) {
    const int noun = SkipAdjectives(i + 1);
    if (IsBothBeforeVerb(i) || TagAt(noun) != Tag::NN || IsPartOfCompound(noun)) return;
    const std::string& word = Lower(noun);
    if (In(noun, "uncounted")) {
      if (Is(i, {"many", "several", "few"}))
        findings_.Add("many-uncounted", i, noun, {"much " + word, "a lot of " + word});
    } else if (IsSingular(noun) && word.find('-') == std::string::npos && !IsExcused(i, noun)) {
      Replace("plural-after-number", noun, Related(noun, Relation::kPlural));
    }
  }

  // "They both work here."
  bool IsBothBeforeVerb(int i) const {
    const Tag next = TagAt(i + 2);
    return Lower(i) == "both" && Has(i + 1, kBase) && !IsSign(i + 2) && !IsVerb(next) && !IsNoun(next);
  }

  bool IsExcused(int i, int noun) const {
    if (Lower(i) == "different") return FitsDifferent(i);
    return In(noun, "unchanged_after_number") || IsPointing(i, noun) || IsBothAnd(i, noun);
  }

  // "a different answer", "That is no different story."
  bool FitsDifferent(int different) const {
    return different > 0 && (IsDeterminer(TagAt(different - 1)) || In(different - 1, "fits_one_different"));
  }

  // "Those present face it again."
  bool IsPointing(int i, int noun) const { return Is(i, {"these", "those"}) && noun != i + 1; }

  // "Both teacher and student agree."
  bool IsBothAnd(int i, int noun) const { return Lower(i) == "both" && Is(noun + 1, {"and", "or"}); }

  // "much books"
  void CheckMuch(int i) {
    if (TagAt(i + 1) != Tag::NNS || !IsPlural(i + 1)) return;
    if (!In(i + 1, "uncounted") && Lower(i + 1) != "news") Replace("much-counted", i, "many");
  }

  bool IsSingularDeterminer(int i) const {
    if (Lower(i) == "each" && Lower(i + 1) == "other") return false;
    return TagAt(i) == Tag::DT && Is(i, {"a", "an", "every", "each", "another", "this"});
  }

  void CheckSingular(int i) {
    const int noun = SkipAdjectives(i + 1);
    if (IsQuantity(i + 1, noun + 1) || IsPartOfCompound(noun)) return;
    if (TagAt(noun) == Tag::NNS && IsPlural(noun) && !IsOwner(noun) && !In(noun, "plural_looking") &&
        !IsVerbOfSubject(i, noun))
      ReportPlural(i, noun);
    if (IsArticleA(i) && TagAt(noun) == Tag::NN && In(noun, "never_with_a") && !IsLittle(i + 1))
      findings_.Add("a-uncounted", i, i, {""});
  }

  // "a few books", "every two days", "another hundred people"
  bool IsQuantity(int from, int to) const {
    return AnyIn(from, to, "plural_quantities") || AnyOf(from, to, {"hundred", "dozen", "great", "couple"});
  }

  // "This results in a loss", "When a current passes through it": the tagger takes the verb for a noun.
  bool IsVerbOfSubject(int determiner, int noun) const {
    if (Lacks(noun, kThird)) return false;
    if (noun > determiner + 1) return Mostly(noun, kVerbPart) || Mostly(noun - 1, kNounPart);
    const Tag next = TagAt(noun + 1);
    const bool goesOn = next == Tag::IN || next == Tag::DT || next == Tag::TO || next == Tag::PRPS ||
                        IsAdjective(next) || IsNoun(next);
    return Lower(determiner) == "this" && StartsClause(determiner) && goesOn;
  }

  // "He said 'it is a boys'": the tagger may take the mark of an owner for a quotation mark.
  bool IsOwner(int noun) const { return Lower(noun + 1) == "'"; }

  // "a little advice"
  bool IsLittle(int i) const { return Is(i, {"little", "bit"}); }

  // "a books", "every students", "another books", "this books"
  void ReportPlural(int i, int noun) {
    const std::string& word = Lower(i);
    if (word == "another") {
      Replace("another-plural", i, At(i).IsCapitalised() ? "Other" : "other");
    } else if (word == "this") {
      Replace("this-plural", i, "these");
    } else {
      Replace(IsArticleA(i) ? "a-plural" : "every-plural", noun, Related(noun, Relation::kIsPluralOf));
    }
  }

  // "one of my friend", "one of most popular"
  void CheckOneOf(int i) {
    if (!Is(i, {"the", "these", "those"}) && TagAt(i) != Tag::PRPS) {
      if (Has(i, kSuperlative) || Is(i, {"most", "best"})) Replace("one-of-the", i, "the " + At(i).text);
      return;
    }
    int noun = i + 1;
    while (IsAdjective(TagAt(noun)) || IsAdverb(TagAt(noun))) ++noun;
    if (TagAt(noun) != Tag::NN || !IsSingular(noun) || IsPartOfCompound(noun)) return;
    if (!In(noun, "uncounted") && !In(noun, "either_number"))
      Replace("one-of-plural", noun, Related(noun, Relation::kPlural));
  }
};

}  // namespace

void CheckNumber(const Phrases& phrases, Findings& findings) { NumberCheck(phrases, findings).Run(); }

}  // namespace tolvex
