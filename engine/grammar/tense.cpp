// Words of time and the tense of the verb: "yesterday I go", "I will come yesterday".
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class TenseCheck : Check {
 public:
  using Check::Check;

  void Run() {
    bool pastDone = false;
    for (int i = 0; i < Size(); ++i) {
      if (NamesPast(i) && !pastDone) {
        CheckPastTime(i);
        pastDone = true;
      }
      if (NamesFuture(i)) CheckFutureTime(i);
      CheckIfWill(i);
    }
  }

 private:
  // "yesterday", "ago", "last week", "in 2015", "in the past": such a time begins (or, for "ago", ends) at i.
  bool NamesPast(int i) const {
    if (Is(i, {"yesterday", "ago"})) return true;
    if (Lower(i) == "last") return In(i + 1, "calendar") && !In(i - 1, "not_before_last");
    if (Lower(i) != "in") return false;
    if (TagAt(i + 1) == Tag::CD) return IsPastYear(i + 1);
    return Lower(i + 1) == "the" && Lower(i + 2) == "past" && IsSign(i + 3);
  }

  // Later years may be plans, and long sentences mostly describe a table or a plan of a year.
  bool IsPastYear(int i) const {
    constexpr int kMostTokensOfStory = 10;
    const std::string& word = Lower(i);
    return IsYear(i) && word >= "1800" && word < "2024" && Size() <= kMostTokensOfStory &&
           (IsSign(i + 1) || TagAt(i + 1) == Tag::PRP || Lower(i + 1) == "my");
  }

  // "tomorrow", "next week"
  bool NamesFuture(int i) const {
    if (Lower(i) == "tomorrow") return true;
    return Lower(i) == "next" && In(i + 1, "calendar") && !Is(i - 1, {"the", "very"});
  }

  void CheckPastTime(int time) {
    if (IsOwner(time) || In(time - 1, "not_before_past_time")) return;
    const FiniteVerb verb = VerbOfTime(time);
    if (verb.at < 0 || IsOfSubject(time, verb.at)) return;
    if (verb.tense == Tense::kPerfect) CheckPerfect(verb.at, time);
    if (verb.tense == Tense::kModal) CheckModal(verb.at, time);
    if (verb.tense == Tense::kPresent) CheckPresent(verb.at, time);
  }

  // "I read yesterday's paper", "Last week's news is sad."
  bool IsOwner(int time) const { return Lower(time + 1) == "'s" || Lower(time + 2) == "'s"; }

  // "The letters signed yesterday are here": the time belongs to what happened before.
  bool IsOfSubject(int time, int verb) const {
    if (verb < time) return false;
    for (int i = 0; i < time; ++i) {
      if (Has(i, kPast | kParticiple)) return true;
    }
    return false;
  }

  // The verb before a word of time, or the first one after a word that opens the sentence.
  FiniteVerb VerbOfTime(int time) const {
    const FiniteVerb before = verbs_.Last(0, time);
    return before.at >= 0 ? before : verbs_.First(time, Size());
  }

  // "I have seen him yesterday."
  void CheckPerfect(int have, int time) {
    if (IsStretchOfTime(time) || IsOfAnother(have, time)) return;
    const int participle = TagAt(have + 1) == Tag::VBN ? have + 1 : have + 2;
    std::string past = PastOfPerfect(have, participle);
    while (past.ends_with(' ')) past.pop_back();
    if (TagAt(participle) != Tag::VBN || past.empty()) return;
    if (Lower(have)[0] == '\'') past = " " + past;
    Replace("perfect-with-past-time", have, participle, past);
  }

  // "He has slept since lunch yesterday", "It has grown in the past."
  bool IsStretchOfTime(int time) const {
    return AnyOf(0, time, {"since", "until", "till"}) || Lower(time + 2) == "past";
  }

  // "have seen" as "saw"; "have been to" as "went to".
  std::string PastOfPerfect(int have, int participle) const {
    const std::string between = participle == have + 2 ? At(have + 1).text + " " : "";
    if (Lower(participle) != "been") return between + Inflected(participle, kPast);
    if (Lower(participle + 1) == "to") return between + "went";
    const bool plural = Lower(have) == "have" && Lower(have - 1) != "i";
    return (plural ? "were " : "was ") + between;
  }

  // "The house is the one built last year", "She is the girl who yesterday won."
  bool IsOfAnother(int verb, int time) const {
    const bool mayHaveParticiple = In(verb, "may_have_participle");
    for (int i = verb + 1; i < time; ++i) {
      if (In(i, "other_clause")) return true;
      const Tag tag = TagAt(i);
      if ((tag == Tag::VBN || tag == Tag::VBD) && !(mayHaveParticiple && i <= verb + 2)) return true;
    }
    return false;
  }

  // "I can't call you last night", "He will come yesterday"
  void CheckModal(int modal, int time) {
    if (IsSaidNow(modal) || IsOfAnother(modal, time) || IsQuestion()) return;
    if (Is(modal, {"can", "ca"})) Replace("past-time", modal, "could");
    const std::string past = Inflected(modal + 1, kPast);
    if (Lower(modal) == "will" && !past.empty() && Has(modal + 1, kBase))
      Replace("past-time", modal, modal + 1, past);
  }

  // "I can remember last summer", "He will have left yesterday."
  bool IsSaidNow(int modal) const {
    return Is(modal + 1, {"remember", "forget", "believe", "imagine", "have", "see"});
  }

  // "Yesterday I go to school."
  void CheckPresent(int verb, int time) {
    if (IsOpinion(verb) || IsOfAnother(verb, time) || SpeaksOfPresent()) return;
    Replace("past-time", verb, PastOf(verb));
  }

  // "I remember yesterday": what is thought now may be past.
  bool IsOpinion(int verb) const { return In(verb, "opinion_verbs") && !IsNot(verb - 1); }

  // "She still sleeps as badly as last week."
  bool SpeaksOfPresent() const { return AnyOf(0, Size(), {"since", "\"", "ever", "still"}); }

  void CheckFutureTime(int time) {
    if (verbs_.all.size() != 1 || IsOwner(time) || IsSpeech()) return;
    const FiniteVerb verb = verbs_.all[0];
    if (verb.tense == Tense::kPast && IsStory(verb.at)) ReplaceByFuture("future-time", verb.at);
    if (verb.tense == Tense::kPresent && IsUnplannedEvent(verb.at) && !IsQuestion())
      ReplaceByFuture("future-present", verb.at);
  }

  void ReplaceByFuture(std::string_view rule, int verb) {
    const std::string_view base = Lemma(verb);
    if (!base.empty()) Replace(rule, verb, "will " + std::string(base));
  }

  // "What if it rains tomorrow?"
  bool IsSpeech() const { return AnyIn(0, Size(), "speech_signs"); }

  // "I visited my aunt next week", "We had a test tomorrow": longer sentences may be about an old plan.
  bool IsStory(int verb) const {
    constexpr int kMostTokens = 11;
    if (Size() > kMostTokens) return false;
    if (Lower(verb + 1) == "to" && Has(verb + 2, kBase)) return false;  // "She decided to go next month."
    if (Lower(verb) == "had" && TagAt(verb + 1) == Tag::DT) return true;
    return TagAt(verb) == Tag::VBD && !Is(verb, {"had", "was", "were"});
  }

  // "I visit my aunt next month": only a timetable is in the present.
  bool IsUnplannedEvent(int verb) const {
    if (verb == 0 || LemmaIn(verb, "timetable_verbs") || AnyIn(0, verb, "no_plain_future")) return false;
    return LemmaIn(verb, "event_verbs") || Lemma(verb) == "rain" || Lemma(verb) == "snow";
  }

  // "If it will rain tomorrow, we will stay": no "will" after "if" and "when".
  void CheckIfWill(int i) {
    if ((i > 0 && !IsComma(i - 1)) || !Is(i, {"if", "when", "unless", "until"})) return;
    const int will = TagAt(i + 1) == Tag::PRP ? i + 2 : i + 3;
    if (Lower(will) != "will" || TagAt(will) != Tag::MD || IsPoliteRequest(will)) return;
    if (IsFutureAfterComma(will)) Replace("if-will", will, will + 1, PresentAfter(i, will));
  }

  // "If you will excuse me, I will go."
  bool IsPoliteRequest(int will) const {
    return Is(will + 1, {"follow", "excuse", "forgive", "allow", "pardon"});
  }

  // "If it will rain, the team will stay."
  bool IsFutureAfterComma(int will) const {
    const int comma = NextComma(will + 1);
    return Is(comma + 2, {"will", "can", "'ll", "shall", "may"}) ||
           Is(comma + 3, {"will", "can", "'ll", "may"});
  }

  std::string PresentAfter(int opener, int will) const {
    const bool third = Is(opener + 1, {"he", "she", "it"}) || TagAt(will - 1) == Tag::NN;
    if (Lower(will + 1) == "be") return third ? "is" : "are";
    return third ? Inflected(will + 1, kThird) : std::string(Lemma(will + 1));
  }

  const FiniteVerbs verbs_ = ReadFiniteVerbs();
};

}  // namespace

void CheckTense(const Phrases& phrases, Findings& findings) { TenseCheck(phrases, findings).Run(); }

}  // namespace tolvex
