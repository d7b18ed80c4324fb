// "There is many", "there are a".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class ThereBeCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 0; i < Size(); ++i) {
      if (Lower(i) == "there") CheckBe(i + 1);
    }
  }

 private:
  void CheckBe(int be) {
    const bool adverb = TagAt(be + 1) == Tag::RB && Lower(be + 1) != "much";
    const int next = adverb ? be + 2 : be + 1;
    const std::string& word = Lower(be);
    if (Is(be, {"is", "was", "'s"}) && LooksPlural(next))
      Replace("there-be-plural", be, word == "was" ? "were" : word == "is" ? "are" : " are");
    if (Is(be, {"are", "were"}) && LooksSingular(next))
      Replace("there-be-singular", be, word == "are" ? "is" : "was");
  }

  // "many cars", "some new cars", "a few cars", "a lot of cars", "cars"
  bool LooksPlural(int i) const {
    if (In(i, "plural_after_there")) return true;
    if (Lower(i) == "some" || IsAdjective(TagAt(i))) return IsPluralNoun(i + 1);
    if (Lower(i) != "a") return IsPluralNoun(i);
    if (Lower(i + 1) == "few") return true;
    return Lower(i + 1) == "lot" && Lower(i + 2) == "of" && IsCountedAfterLot(i + 3);
  }

  bool IsPluralNoun(int i) const { return TagAt(i) == Tag::NNS && IsPlural(i); }

  bool IsCountedAfterLot(int i) const {
    return Lower(i) == "people" || TagAt(i) == Tag::NNS ||
           (IsAdjective(TagAt(i)) && TagAt(i + 1) == Tag::NNS);
  }

  // "a cat", "another cat", "much noise"; but "a number of cats".
  bool LooksSingular(int i) const {
    if (Is(i, {"another", "much"})) return TagAt(i + 1) == Tag::NN;
    return IsArticleA(i) && !In(i + 1, "many_with_a");
  }
};

}  // namespace

void CheckThereBe(const Phrases& phrases, Findings& findings) { ThereBeCheck(phrases, findings).Run(); }

}  // namespace tolvex
