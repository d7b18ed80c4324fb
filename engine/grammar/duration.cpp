// What began in the past and lasts: "I live here since 2015", "they know each other for ten years".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class DurationCheck : Check {
 public:
  using Check::Check;

  void Run() {
    CheckRecently();
    for (int i = 0; i < Size(); ++i) {
      if (Lower(i) == "since") CheckSince(i);
      if (Lower(i) == "for" && i > 1) CheckFor(i);
    }
  }

 private:
  // "I live here since 2015", "Since 2015, he works here."
  void CheckSince(int since) {
    const bool clause = IsPointClause(since + 1);
    if (!clause && !IsPoint(since + 1)) return;
    const FiniteVerb verb = since == 0 ? verbs_.First(NextComma(0), Size()) : OnlyVerbBefore(since);
    if (verb.at < 0 || (since > 0 && IsMeasure(verb, since))) return;
    if (verb.tense == Tense::kPresent || (IsPastOfPronoun(verb) && !clause)) MakePerfect(verb);
  }

  // Whether i names a point of time, so that "since" before it does not mean "because".
  bool IsPoint(int i) const {
    if (IsYear(i) || Lower(i + 1) == "o'clock" || In(i, "points_in_life")) return true;
    if (Lower(i) == "this") return Is(i + 1, {"morning", "afternoon", "week", "monday"});
    const int point = Is(i, {"early", "late"}) ? i + 1 : i;
    return In(point, "past_points") && Lower(point) != "may";
  }

  // "since I was a child", "since we met"
  bool IsPointClause(int i) const {
    if (!Is(i, {"i", "he", "she", "we", "they"})) return false;
    if (!Is(i + 1, {"was", "were"})) return In(i + 1, "beginnings");
    const Tag tag = TagAt(i + 2);
    return tag == Tag::CD || tag == Tag::DT || In(i + 2, "ages");
  }

  FiniteVerb OnlyVerbBefore(int end) const {
    return verbs_.Count(0, end) == 1 ? verbs_.Last(0, end) : FiniteVerb();
  }

  // "It is ten years since we met", "It is the largest since 1990", "He lives there ever since 2010."
  bool IsMeasure(const FiniteVerb& verb, int since) const {
    for (int i = verb.at + 1; i < since; ++i) {
      const bool best = TagAt(i) == Tag::JJS || TagAt(i) == Tag::RBS;
      if ((best && Lower(i - 1) == "the") || In(i, "measures_of_time")) return true;
    }
    return false;
  }

  // "He worked here since 2010."
  bool IsPastOfPronoun(const FiniteVerb& verb) const {
    return verb.tense == Tense::kPast && !Is(verb.at, {"was", "were", "had"}) &&
           TagAt(verb.at - 1) == Tag::PRP;
  }

  // "They know each other for ten years."
  void CheckFor(int i) {
    const int end = DurationEnd(i + 1);
    if (end < 0 || !(IsSign(end) || Is(end, {"now", "already"}))) return;
    const FiniteVerb verb = OnlyVerbBefore(i);
    if (verb.at < 0 || verb.tense != Tense::kPresent || !Lasts(verb.at)) return;
    if (!IsPlan(verb.at) && !IsOfAnother(verb.at, i)) MakePerfect(verb);
  }

  // "about ten years", "a long time": the place after it, or -1.
  int DurationEnd(int i) const {
    if (Is(i, {"about", "over", "almost", "nearly"})) ++i;
    if (Lower(i) == "more" && Lower(i + 1) == "than") i += 2;
    if (Lower(i) == "a") return Lower(i + 1) == "long" && Lower(i + 2) == "time" ? i + 3 : -1;
    const bool number = TagAt(i) == Tag::CD || In(i, "small_numbers");
    return number && Is(i + 1, {"years", "months", "decades"}) ? i + 2 : -1;
  }

  bool Lasts(int verb) const {
    return LemmaIn(verb, "lasting_verbs") || (Lemma(verb) == "be" && In(verb + 1, "lasting_states"));
  }

  // "She usually works abroad for two years."
  bool IsPlan(int verb) const { return AnyOf(0, verb, {"if", "when", "to", "must", "usually"}); }

  // "They learn to cook for two years."
  bool IsOfAnother(int verb, int duration) const {
    return AnyOf(verb + 1, duration, {"to", "who", "that", "every"});
  }

  // "Recently I am very busy", "In recent years people eat less meat."
  void CheckRecently() {
    if (!OpensWithRecentTime()) return;
    const FiniteVerb verb = verbs_.First(1, Size());
    if (verb.at >= 0 && verb.tense == Tense::kPresent && !IsHaveTo(verb.at)) MakePerfect(verb);
  }

  bool OpensWithRecentTime() const {
    if (Is(0, {"recently", "lately"})) return true;
    if (Lower(0) == "in") return Lower(1) == "recent" && Is(2, {"years", "months", "weeks"});
    return Lower(0) == "so" && Lower(1) == "far" && TagAt(2) != Tag::IN;
  }

  // "Recently I have to work late."
  bool IsHaveTo(int verb) const { return TagAt(verb + 1) == Tag::TO; }

  // "am living": "have been living", "don't see": "haven't seen". "isn't" and the "do" of questions stay.
  void MakePerfect(const FiniteVerb& verb) {
    const std::string have = IsThirdSubject(verb) ? "has" : "have";
    if (Lemma(verb.at) == "be" || Lower(verb.at) == "'s") {
      const std::string glue = Lower(verb.at)[0] == '\'' ? " " : "";
      if (!IsNot(verb.at + 1)) Replace("perfect-since", verb.at, verb.at, glue + have + " been");
    } else if (!Is(verb.at, {"do", "does", "did"})) {
      Replace("perfect-since", verb.at, verb.at, have + " " + Inflected(verb.at, kParticiple));
    } else if (IsNot(verb.at + 1) && Has(verb.at + 2, kBase)) {
      Replace("perfect-since", verb.at, verb.at + 2, have + "n't " + Inflected(verb.at + 2, kParticiple));
    }
  }

  bool IsThirdSubject(const FiniteVerb& verb) const {
    if (verb.tense == Tense::kPresent)
      return Has(verb.at, kThird) || Is(verb.at, {"is", "'s", "does", "has"});
    const int subject = SubjectEnd(verb.at);
    return Is(subject, {"he", "she", "it"}) || TagAt(subject) == Tag::NN || TagAt(subject) == Tag::NNP;
  }

  const FiniteVerbs verbs_ = ReadFiniteVerbs();
};

}  // namespace

void CheckDuration(const Phrases& phrases, Findings& findings) { DurationCheck(phrases, findings).Run(); }

}  // namespace tolvex
