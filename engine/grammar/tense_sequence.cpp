// One time in two clauses: "when the bell rang, they run out", "he opened the door and sees a man".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class TenseSequenceCheck : Check {
 public:
  using Check::Check;

  void Run() {
    if (AnyIn(0, Size(), "present_words")) return;
    CheckTimeClauses();
    for (int i = 2; i < Size(); ++i) {
      if (Is(i, {"and", "but", "so"}) && verbs_.Count(0, i) == 1) CheckJoined(i);
    }
  }

 private:
  void CheckTimeClauses() {
    if (IsQuestion()) return;
    int joiner = 0;
    while (joiner < Size() && TimeJoinerLength(joiner) == 0) ++joiner;
    if (joiner == 0) CheckOpening(TimeJoinerLength(0));
    if (joiner > 0 && joiner < Size()) CheckFollowing(joiner);
  }

  // How many words of a joining expression of time begin at i; none: 0.
  int TimeJoinerLength(int i) const {
    if (Is(i, {"when", "while", "before", "after", "until", "till"})) return 1;
    const std::string& word = Lower(i);
    if (word == "as" && Lower(i + 1) == "soon" && Lower(i + 2) == "as") return 3;
    return word == "by" && Lower(i + 1) == "the" && Lower(i + 2) == "time" ? 3 : 0;
  }

  // "When the bell rang, they run out."
  void CheckOpening(int length) {
    const int comma = NextComma(length);
    if (comma == Size() || verbs_.Count(0, comma) != 1) return;
    const FiniteVerb main = verbs_.First(comma, Size());
    if (main.at >= 0 && !IsInThirdClause(comma, main.at))
      CheckPair(verbs_.First(0, comma), main, Lower(0) == "while");
  }

  // "When he came, the man who lives here and …"
  bool IsInThirdClause(int comma, int verb) const {
    return AnyOf(comma, verb, {"who", "which", "that", "what", "because", "and"});
  }

  // "They run out when the bell rang."
  void CheckFollowing(int joiner) {
    if (verbs_.Count(0, joiner) != 1 || verbs_.Count(joiner, Size()) != 1) return;
    const FiniteVerb main = verbs_.First(0, joiner);
    if (AnyIn(0, joiner, "no_main_clause") || In(joiner - 1, "narrowing_words") || IsNamed(main.at, joiner))
      return;
    CheckPair(verbs_.Last(joiner, Size()), main, false);
  }

  // "It is the day when we met."
  bool IsNamed(int main, int joiner) const {
    return IsNoun(TagAt(joiner - 1)) && Is(main, {"is", "are", "'s"});
  }

  // `sub` is in the clause of time, `main` in the other.
  void CheckPair(const FiniteVerb& sub, const FiniteVerb& main, bool contrast) {
    if (IsSurelyPast(sub) && main.tense == Tense::kPresent && !IsTimeless(main.at)) MakePast(main.at);
    if (IsSurelyPast(main) && sub.tense == Tense::kPresent && !IsTimeless(sub.at) && !contrast &&
        !IsGeneral(sub.at))
      MakePast(sub.at);
  }

  // "I remember when I was a child", "When that's true, he left": the present goes with any time.
  bool IsTimeless(int verb) const {
    return LemmaIn(verb, "timeless_verbs") || (Lower(verb) == "'s" && Lower(verb - 1) == "that");
  }

  // "It stopped when you push the button", "It closed when they have to rest."
  bool IsGeneral(int verb) const { return Lower(verb - 1) == "you" || Lower(verb + 1) == "to"; }

  void MakePast(int verb) { Replace("one-time", verb, PastOf(verb)); }

  // "He opened the door and sees a man."
  void CheckJoined(int joiner) {
    const FiniteVerb first = verbs_.Last(0, joiner);
    if (!IsSurelyPast(first) || IsLastingChange(first.at) || Is(first.at, {"was", "were", "had"})) return;
    if (AnyIn(0, joiner, "clause_words") || AnyIn(first.at, joiner, "governing_verbs")) return;
    const int verb = JoinedVerb(joiner);
    if (verb >= 0 && IsEvent(verb)) MakePast(verb);
  }

  // "He retired and takes care of his garden": after a change, the present may be meant.
  bool IsLastingChange(int verb) const { return LemmaIn(verb, "lasting_changes"); }

  // The present verb after "and", "then", "so" with or without a pronoun; -1 when there is none.
  int JoinedVerb(int joiner) const {
    int i = joiner + 1;
    while (Lower(i) == "then" || IsAdverb(TagAt(i))) ++i;
    const bool subject = Is(i, {"i", "he", "she", "it", "we", "they"});
    if (subject) ++i;
    while (IsAdverb(TagAt(i))) ++i;
    const FiniteVerb verb = verbs_.First(i, i + 1);
    if (verb.at >= 0) return verb.tense == Tense::kPresent ? verb.at : -1;
    const bool bare = !subject && Lower(joiner) == "and" && TagAt(i) == Tag::VB;
    return bare && Lacks(i, kPast | kParticiple) ? i : -1;
  }

  // "sees", "doesn't come", "has lunch"
  bool IsEvent(int verb) const {
    const int event = Is(verb, {"do", "does"}) && IsNot(verb + 1) ? verb + 2 : verb;
    if (Lemma(event) == "have") return Is(event + 1, {"breakfast", "lunch", "dinner", "supper", "a", "some"});
    return LemmaIn(event, "event_verbs");
  }

  const FiniteVerbs verbs_ = ReadFiniteVerbs();
};

}  // namespace

void CheckTenseSequence(const Phrases& phrases, Findings& findings) {
  TenseSequenceCheck(phrases, findings).Run();
}

}  // namespace tolvex
