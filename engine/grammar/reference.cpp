// Pronouns and what they stand for: "My friend Mary, he is kind", "My sister lost his keys".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

enum class Gender { kNone, kMale, kFemale };

struct Pronoun {
  std::string_view male;
  std::string_view female;
};

class ReferenceCheck : Check {
 public:
  using Check::Check;

  void Run() {
    CheckGender();
    CheckResumed();
    for (int i = 2; i < Size(); ++i) CheckNameOf(i);
  }

 private:
  Gender GenderOf(int noun) const {
    if (In(noun, "male")) return Gender::kMale;
    return In(noun, "female") ? Gender::kFemale : Gender::kNone;
  }

  bool IsPerson(int noun) const { return In(noun, "persons") || GenderOf(noun) != Gender::kNone; }

  // "My sister lost his keys", "My father hurt herself."
  void CheckGender() {
    const NounPhrase subject = NounPhraseAt(0);
    if (subject.head < 0 || TagAt(0) == Tag::NNP || IsName(subject.head)) return;
    const Gender gender = GenderOf(subject.head);
    int i = subject.end;
    while (i < Size() && Turned(i, gender).empty()) ++i;
    if (i < Size() && MeansSubject(i, subject.end) && !NamesAnother(subject.end, i, gender))
      Replace("pronoun-gender", i, Turned(i, gender));
  }

  // The word of the wanted gender; "" where it has that gender or "her" is an object.
  std::string_view Turned(int i, Gender wanted) const {
    static constexpr std::array<Pronoun, 3> kPronouns = {
        {{"he", "she"}, {"himself", "herself"}, {"his", "her"}}};
    for (const Pronoun& pronoun : kPronouns) {
      if (wanted == Gender::kFemale && Lower(i) == pronoun.male) return pronoun.female;
      const bool object = pronoun.female == "her" && TagAt(i) != Tag::PRPS;
      if (wanted == Gender::kMale && Lower(i) == pronoun.female && !object) return pronoun.male;
    }
    return {};
  }

  bool MeansSubject(int pronoun, int subjectEnd) const {
    if (Is(pronoun, {"himself", "herself"})) return true;
    if (!Is(pronoun, {"his", "her"})) return GoesOn(pronoun);
    const bool joined = pronoun == subjectEnd + 1 && Lower(subjectEnd) == "and";
    return joined || IsOwn(pronoun);
  }

  // "My mother is a teacher, and he …": a clause about the same person goes on.
  bool GoesOn(int pronoun) const {
    return Is(pronoun - 1, {"and", "but", ",", "so", "because"}) &&
           Is(2, {"is", "was", "likes", "loves", "works", "has"});
  }

  // "My sister lost his keys": what people lose, hurt and clean is mostly their own.
  bool IsOwn(int pronoun) const {
    int noun = pronoun + 1;
    while (IsAdjective(TagAt(noun))) ++noun;
    return LemmaIn(pronoun - 1, "own_verbs") && In(noun, "own_things");
  }

  // "My mother was with Tom, and he laughed." What she is, such as a teacher, is nobody else.
  bool NamesAnother(int from, int to, Gender gender) const {
    const bool saysWhat = Is(from, {"is", "was"});
    for (int i = from; i < to; ++i) {
      const bool person = saysWhat ? GenderOf(i) != Gender::kNone : IsPerson(i);
      const bool name = TagAt(i) == Tag::NNP || TagAt(i) == Tag::NNPS;
      const bool same = Lower(i) == (gender == Gender::kMale ? "his" : "her");
      if (person || name || (!same && In(i, "others_meant"))) return true;
    }
    return false;
  }

  // "I have a sister, his name is …"
  void CheckNameOf(int i) {
    if (!Is(i, {"his", "her"}) || Lower(i + 1) != "name") return;
    if (Is(i - 1, {",", "and"})) Replace("pronoun-gender", i, Turned(i, GenderOf(i - 2)));
  }

  // "My friend Mary, he is kind": the noun before it is subject enough.
  void CheckResumed() {
    const NounPhrase subject = NounPhraseAt(0);
    if (subject.head < 0 || !In(0, "subject_determiners")) return;
    int end = SkipPrepositions(subject.end);
    while (TagAt(end) == Tag::NNP) ++end;
    const bool comma = IsComma(end);
    const int pronoun = end + (comma ? 1 : 0);
    if (!MayStandFor(pronoun, subject.head, comma) || IsTime(subject.head) || !IsFollowedByVerb(pronoun))
      return;
    if (IsReport(pronoun) || (!comma && HasTwoVerbs(pronoun))) return;
    findings_.Add("resumed-subject", end, pronoun, {""});
  }

  bool MayStandFor(int pronoun, int head, bool comma) const {
    if (Lower(pronoun) == "it") return comma && (In(head, "single_things") || In(head, "count_nouns"));
    return Is(pronoun, {"he", "she", "they"}) && (IsPerson(head) || In(head, "person_plurals"));
  }

  // "The best way, it seems, is to wait."
  bool IsTime(int head) const { return Is(head, {"day", "time", "way"}); }

  bool IsFollowedByVerb(int pronoun) const {
    const Tag next = TagAt(pronoun + 1);
    return IsFiniteVerb(next) || IsAdverb(next);
  }

  // "My teacher, he said, was ill."
  bool IsReport(int pronoun) const { return AnyOf(pronoun + 1, Size(), {"said", "thought", "asked"}); }

  // "The man she married is rich."
  bool HasTwoVerbs(int pronoun) const {
    int verbs = 0;
    for (int i = pronoun + 1; i < Size(); ++i) verbs += IsFiniteVerb(TagAt(i)) ? 1 : 0;
    return verbs != 1;
  }
};

}  // namespace

void CheckReference(const Phrases& phrases, Findings& findings) { ReferenceCheck(phrases, findings).Run(); }

}  // namespace tolvex
