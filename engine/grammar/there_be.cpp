// "There is many", "there are a".
#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

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
  if (sentence.Is(i, {"another", "much"})) return sentence.TagAt(i + 1) == Tag::NN;
  if (!sentence.Is(i, {"a", "an"})) return false;
  static const WordSet kManyMeant = {
      "lot",   "lots",    "few",     "number",  "couple",   "great",     "large",   "variety",     "huge",
      "wide",  "small",   "range",   "series",  "million",  "good",      "hundred", "significant", "thousand",
      "dozen", "growing", "handful", "limited", "plethora", "multitude", "wealth"};
  return kManyMeant.count(sentence.Lower(i + 1)) == 0;
}

}  // namespace

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
