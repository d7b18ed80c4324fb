// What may follow a modal verb, "do", "to", "have" and "be".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class VerbGroupCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 0; i < Size(); ++i) {
      CheckAfterModal(i);
      CheckAfterTo(i);
      CheckAfterHave(i);
      CheckAfterBe(i);
      CheckDoubleBe(i);
      CheckBareNot(i);
    }
  }

 private:
  bool IsBe(int i) const {
    return Is(i, {"is", "are", "was", "were", "am", "'m", "'re"}) ||
           (Lower(i) == "'s" && TagAt(i) == Tag::VBZ);
  }

  bool IsNegatedDo(int i) const { return Is(i, {"do", "does", "did"}) && IsNot(i + 1); }

  // "He can sings", "I didn't went"
  void CheckAfterModal(int i) {
    const bool modal = IsModal(i);
    if (!modal && !IsNegatedDo(i)) return;
    const int verb = SkipGroupAdverbs(i + 1);
    if (IsWrongAfterModal(i, verb) && !OpensNextClause(verb) && !IsUsedTo(verb))
      Replace(modal ? "modal-base" : "do-base", verb, Lemma(verb));
    if (!modal) return;
    if (IsInfinitive(verb) && !IsStrength(i)) findings_.Add("modal-to", verb, verb, {""});
    if (IsBareAdjective(verb) && !IsQuestion() && i > 0) Replace("modal-be", verb, "be " + At(verb).text);
    if (IsModal(i + 1) && !MayBeNoun(i)) Replace("two-modals", i, i + 1, At(i).text);
  }

  bool IsWrongAfterModal(int modal, int verb) const {
    const bool wrong = Lacks(verb, kBase) && (IsVerbForm(verb) || IsVerbTakenForNoun(modal, verb));
    if (FollowsNoun(modal)) return wrong && Lemma(verb) != "be";
    return wrong || (verb == modal + 1 && In(verb, "full_forms_of_be"));
  }

  bool IsVerbForm(int i) const { return IsVerb(TagAt(i)) && Has(i, kAnyVerbForm); }

  // "My sister can sings."
  bool IsVerbTakenForNoun(int modal, int verb) const {
    const Tag subject = TagAt(modal - 1);
    return TagAt(verb) == Tag::NNS && Has(verb, kThird) && (subject == Tag::PRP || IsNoun(subject));
  }

  // "The trash can is full."
  bool FollowsNoun(int modal) const {
    return IsNoun(TagAt(modal - 1)) && Is(modal, {"can", "will", "may", "might", "must"});
  }

  // "All that he can does not help."
  bool OpensNextClause(int verb) const { return Lower(verb) == "does" && IsNot(verb + 1); }

  // "He did not used to smoke."
  bool IsUsedTo(int verb) const { return Lower(verb) == "used"; }

  // "He can to swim."
  bool IsInfinitive(int to) const {
    return Lower(to) == "to" && (Has(to + 1, kBase) || Lower(to + 1) == "be");
  }

  // "He used his might to win."
  bool IsStrength(int modal) const { return Lower(modal) == "might"; }

  // "You must careful."
  bool IsBareAdjective(int i) const {
    return (TagAt(i) == Tag::JJ || TagAt(i) == Tag::VB) && Mostly(i, kAdjectivePart) &&
           Lacks(i, kAnyVerbForm);
  }

  // "The can will leak."
  bool MayBeNoun(int modal) const { return Is(modal, {"can", "will", "may", "might"}); }

  // "to went", "want to going"
  void CheckAfterTo(int i) {
    if (Lower(i) != "to") return;
    if (IsWrongAfterTo(i + 1) && !IsDueTo(i) && !MayBeObject(i + 1)) Replace("to-base", i + 1, Lemma(i + 1));
    if (TagAt(i + 1) == Tag::VBG && Has(i + 1, kIng) && In(i - 1, "infinitive_takers"))
      Replace("to-base", i + 1, Lemma(i + 1));
  }

  bool IsWrongAfterTo(int verb) const {
    const Tag tag = TagAt(verb);
    return (tag == Tag::VBZ || tag == Tag::VBD || tag == Tag::VB || tag == Tag::VBN) &&
           Has(verb, kAnyVerbForm) && Lacks(verb, kBase | kIng);
  }

  // "The delay was due to frozen pipes."
  bool IsDueTo(int to) const { return Lower(to - 1) == "due"; }

  // "It leads to improved results."
  bool MayBeObject(int verb) const { return CanBe(verb, kNounPart | kAdjectivePart) || Has(verb, kPlural); }

  // "has went", "have took"
  void CheckAfterHave(int i) {
    if (!Is(i, {"have", "has", "had", "'ve", "having"}) || !IsVerb(TagAt(i))) return;
    const int verb = SkipGroupAdverbs(i + 1);
    if (IsWrongAfterHave(verb) && !IsPossession(verb))
      Replace("have-participle", verb, Inflected(verb, kParticiple));
  }

  bool IsWrongAfterHave(int verb) const {
    const Tag tag = TagAt(verb);
    return (tag == Tag::VBD || tag == Tag::VBN || tag == Tag::VB || tag == Tag::VBP) &&
           Has(verb, kPast | kBase | kThird) && Lacks(verb, kParticiple) && Lemma(verb) != "be";
  }

  // "We had brown bread."
  bool IsPossession(int verb) const { return CanBe(verb, kNounPart | kAdjectivePart) && Lacks(verb, kPast); }

  // "I am agree", "It is belong to me", "He was went home"
  void CheckAfterBe(int i) {
    if (i == 0 || !IsBe(i) || !IsVerb(TagAt(i)) || IsInWhatClause(i) || IsQuestion()) return;
    const int verb = SkipGroupAdverbs(i + 1);
    const bool listed = In(verb, "never_after_be") && !IsNounBeforeOf(verb);
    if (!listed && !IsSurelyWrongAfterBe(verb)) return;
    std::vector<std::string> corrections;
    if (verb == i + 1) {
      const std::string plain = Inflected(verb, FormWithoutBe(i));
      corrections = {Lower(i)[0] == '\'' ? " " + plain : plain, At(i).text + " " + Inflected(verb, kIng)};
    }
    findings_.Add("be-verb", i, verb, std::move(corrections));
  }

  // "What I want is go home", "All he did was sit there."
  bool IsInWhatClause(int be) const { return AnyIn(0, be, "what_clause"); }

  bool IsSurelyWrongAfterBe(int verb) const {
    return IsVerb(TagAt(verb)) && Has(verb, kBase | kThird) && Lemma(verb) != "be" &&
           Lacks(verb, kParticiple | kIng) && !CanBe(verb, kNounPart | kAdjectivePart | kAdverbPart);
  }

  // "Stress is cause of many illnesses."
  bool IsNounBeforeOf(int verb) const { return Lower(verb + 1) == "of"; }

  Form FormWithoutBe(int be) const {
    if (Is(be, {"was", "were"})) return kPast;
    return Is(be, {"is", "'s"}) ? kThird : kBase;
  }

  // "He is can swim", "They are do it"
  void CheckDoubleBe(int i) {
    if (i == 0 || !IsBe(i) || Lower(i)[0] == '\'' || !In(i + 1, "never_after_full_be")) return;
    if (EndsClauseBefore(i)) return;
    findings_.Add("double-be", i, i + 1, {At(i + 1).text, At(i).text});
  }

  // "What the answer is is a secret."
  bool EndsClauseBefore(int be) const { return AnyIn(0, be, "double_be_openers"); }

  // "I not like it", "He not go"
  void CheckBareNot(int i) {
    if (Lower(i) != "not" || i == 0 || !IsSubjectOfNot(i - 1) || !IsVerbAfterNot(i + 1)) return;
    if (IsGoverned(i - 1)) return;
    const bool third = Is(i - 1, {"he", "she", "it"});
    Replace("bare-not", i, i + 1, (third ? "doesn't " : "don't ") + std::string(Lemma(i + 1)));
  }

  bool IsSubjectOfNot(int i) const {
    return TagAt(i) == Tag::NNS || (TagAt(i) == Tag::PRP && In(i, "pronoun_subject"));
  }

  bool IsVerbAfterNot(int i) const {
    const Tag tag = TagAt(i);
    return (tag == Tag::VB || tag == Tag::VBP || tag == Tag::VBZ || Lower(i) == "like") &&
           Has(i, kBase | kThird);
  }

  // "Did you not see it?", "Why you not go"
  bool IsGoverned(int subject) const {
    const Tag before = TagAt(subject - 1);
    return IsVerb(before) || before == Tag::MD || before == Tag::TO ||
           Is(subject - 1, {"why", "that", "or", "and"});
  }
};

}  // namespace

void CheckVerbGroup(const Phrases& phrases, Findings& findings) { VerbGroupCheck(phrases, findings).Run(); }

}  // namespace tolvex
