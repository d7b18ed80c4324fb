// Pronouns and their verbs: "he go", "they has".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class PronounCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 0; i < Size(); ++i) {
      if (In(i, "singular_pronouns")) CheckSingular(i);
      if (Is(i, {"i", "you", "we", "they"})) CheckPlural(i);
    }
  }

 private:
  // "She go", "He don't"
  void CheckSingular(int i) {
    const int verb = SkipAdverbs(i + 1);
    if (!IsPlainPresent(verb) || TakesBareVerb(i) || IsObject(i) || IsJoined(i)) return;
    if (Lower(verb) == "were" && (IsUnreal(i) || FollowsNoun(i))) return;
    Replace("third-person", verb, ThirdPersonOf(verb));
  }

  // "The parents of everyone were there", "Those who like it do well."
  bool IsObject(int pronoun) const {
    if (!In(pronoun, "object_too")) return false;
    const Tag before = TagAt(pronoun - 1);
    return (before == Tag::IN && !In(pronoun - 1, "subject_openers")) || before == Tag::TO ||
           (IsVerb(before) && !Is(pronoun - 1, {"think", "believe", "hope", "know", "say"})) ||
           Is(pronoun - 1, {"to", "of"});
  }

  // "My brother and she go to school."
  bool IsJoined(int subject) const {
    return Is(subject - 1, {"and", "or", "nor"}) &&
           (IsNoun(TagAt(subject - 2)) || TagAt(subject - 2) == Tag::PRP);
  }

  // "If he were rich, he would buy it."
  bool IsUnreal(int subject) const { return AnyIn(0, subject, "unreal_openers"); }

  // "The books he were reading"
  bool FollowsNoun(int subject) const { return IsNoun(TagAt(subject - 1)); }

  // "They goes", "I are"
  void CheckPlural(int i) {
    const bool first = Lower(i) == "i";
    const int verb = SkipAdverbs(i + 1);
    const bool wrong = first ? IsWrongAfterI(verb) : IsThirdPresent(verb);
    if (!wrong || IsJoined(i) || (Lower(i) == "you" && IsObjectYou(i))) return;
    Replace("plain-form", verb, first && Is(verb, {"is", "are"}) ? "am" : PluralVerbOf(verb));
  }

  bool IsWrongAfterI(int verb) const {
    return Lower(verb) == "are" || (IsThirdPresent(verb) && Lower(verb) != "was");
  }

  // "The man behind you is my uncle", "What surprises you is the price."
  bool IsObjectYou(int i) const {
    const Tag before = TagAt(i - 1);
    return before == Tag::IN || before == Tag::TO || IsVerb(before);
  }
};

}  // namespace

void CheckPronounAgreement(const Phrases& phrases, Findings& findings) {
  PronounCheck(phrases, findings).Run();
}

}  // namespace tolvex
