// What began in the past and lasts: "I live here since 2015", "they know each other for ten years".
#include "engine/grammar/checks.h"
#include "engine/grammar/finite_verbs.h"

namespace tolvex {
namespace {

using Verbs = std::vector<FiniteVerb>;

bool IsYear(const std::string& word) {
  return word.size() == 4 && word.find_first_not_of("0123456789") == std::string::npos;
}

// Whether a point of time stands at i, so that "since" before it does not mean "because".
bool IsPoint(const Sentence& sentence, const Findings& findings, int i) {
  if (IsYear(sentence.Lower(i)) || sentence.Lower(i + 1) == "o'clock") return true;
  if (sentence.Is(
          i, {"last",      "yesterday", "childhood",  "birth",     "then",         "noon",      "midnight",
              "breakfast", "lunch",     "graduation", "christmas", "elementary",   "primary",   "junior",
              "senior",    "high",      "middle",     "college",   "kindergarten", "university"}))
    return true;
  if (sentence.Lower(i) == "this") return sentence.Is(i + 1, {"morning", "afternoon", "week", "monday"});
  if (sentence.Is(i, {"early", "late"})) ++i;
  return findings.List("past_points").count(sentence.Lower(i)) != 0 && sentence.Lower(i) != "may";
}

// "since I was a child", "since we met"
bool IsPointClause(const Sentence& sentence, int i) {
  if (!sentence.Is(i, {"i", "he", "she", "we", "they"})) return false;
  if (sentence.Is(i + 1, {"was", "were"}))
    return sentence.TagAt(i + 2) == Tag::CD || sentence.TagAt(i + 2) == Tag::DT ||
           sentence.Is(i + 2, {"young", "little", "small", "born", "in", "at", "children", "kids"});
  return sentence.Is(i + 1, {"met", "moved", "graduated", "left", "got", "came", "joined", "arrived",
                             "started", "began", "entered"});
}

bool IsThirdSubject(const Sentence& sentence, const FiniteVerb& verb) {
  if (verb.tense == Tense::kPresent)
    return sentence.Has(verb.at, kThird) || sentence.Is(verb.at, {"is", "'s", "does", "has"});
  int subject = verb.at - 1;
  while (IsAdverb(sentence.TagAt(subject))) --subject;
  return sentence.Is(subject, {"he", "she", "it"}) || sentence.TagAt(subject) == Tag::NN ||
         sentence.TagAt(subject) == Tag::NNP;
}

struct Perfect {
  int last = -1;  // of the tokens that it replaces
  std::string words;
};

// What a verb group becomes in the perfect: "am living": "have been living", "don't see": "haven't seen".
Perfect PerfectOf(const Sentence& sentence, const FiniteVerb& verb) {
  const std::string have = IsThirdSubject(sentence, verb) ? "has" : "have";
  const std::string glue = sentence.Lower(verb.at)[0] == '\'' ? " " : "";
  if (sentence.Lemma(verb.at) == "be" || sentence.Is(verb.at, {"'s", "'m", "'re"})) {
    if (sentence.Is(verb.at + 1, {"not", "n't"})) return {};
    return {verb.at, glue + have + " been"};
  }
  if (sentence.Is(verb.at, {"do", "does", "did"})) {
    const bool negated = sentence.Is(verb.at + 1, {"n't", "not"}) && sentence.Has(verb.at + 2, kBase);
    if (!negated) return {};
    return {verb.at + 2, have + "n't " + sentence.Inflected(verb.at + 2, kParticiple)};
  }
  return {verb.at, have + " " + sentence.Inflected(verb.at, kParticiple)};
}

void MakePerfect(const Sentence& sentence, Findings& findings, const FiniteVerb& verb) {
  const Perfect perfect = PerfectOf(sentence, verb);
  if (perfect.last >= 0) findings.Add("perfect-since", verb.at, perfect.last, {perfect.words});
}

// "It is ten years since …", "the largest since 1990"
bool MeasuresSince(const Sentence& sentence, const FiniteVerb& verb, int since) {
  for (int i = verb.at + 1; i < since; ++i) {
    const bool best = sentence.TagAt(i) == Tag::JJS || sentence.TagAt(i) == Tag::RBS;
    if ((best && sentence.Lower(i - 1) == "the") ||
        sentence.Is(i, {"years", "months", "weeks", "days", "long", "time", "first", "been", "ever", "year",
                        "month", "week"}))
      return true;
  }
  return false;
}

void CheckSince(const Sentence& sentence, Findings& findings, const Verbs& verbs, int since) {
  const bool clause = IsPointClause(sentence, since + 1);
  if (!clause && !IsPoint(sentence, findings, since + 1)) return;
  const bool opens = since == 0;
  int comma = since;
  while (opens && comma < sentence.Size() && sentence.At(comma).text != ",") ++comma;
  const FiniteVerb verb = opens ? FirstIn(verbs, comma, sentence.Size()) : LastIn(verbs, 0, since);
  if (verb.at < 0 || (!opens && CountIn(verbs, 0, since) != 1)) return;
  if (!opens && (MeasuresSince(sentence, verb, since) || sentence.Lower(since - 1) == "ever")) return;
  const bool past = verb.tense == Tense::kPast && !clause && !sentence.Is(verb.at, {"was", "were", "had"}) &&
                    sentence.TagAt(verb.at - 1) == Tag::PRP;
  if (verb.tense == Tense::kPresent || past) MakePerfect(sentence, findings, verb);
}

// "for ten years", "for a long time" at the end: the place behind it, or -1.
int DurationEnd(const Sentence& sentence, const Findings& findings, int i) {
  if (sentence.Is(i, {"about", "over", "almost", "nearly"})) ++i;
  if (sentence.Lower(i) == "more" && sentence.Lower(i + 1) == "than") i += 2;
  if (sentence.Lower(i) == "a" && sentence.Lower(i + 1) == "long" && sentence.Lower(i + 2) == "time")
    return i + 3;
  const bool number =
      sentence.TagAt(i) == Tag::CD || findings.List("small_numbers").count(sentence.Lower(i)) != 0;
  if (!number || sentence.Lower(i) == "a") return -1;
  if (sentence.Is(i + 1, {"years", "months", "decades"})) return i + 2;
  return -1;
}

bool LastsFor(const Sentence& sentence, int verb) {
  static const WordSet kLasting = {"know", "live", "work", "own", "love", "study", "teach", "learn", "serve"};
  if (kLasting.count(std::string(sentence.Lemma(verb))) != 0) return true;
  return sentence.Lemma(verb) == "be" && sentence.Is(verb + 1, {"married", "sick", "ill", "friends", "dead",
                                                                "together", "single", "retired"});
}

void CheckFor(const Sentence& sentence, Findings& findings, const Verbs& verbs, int i) {
  const int end = DurationEnd(sentence, findings, i + 1);
  if (end < 0 || !(sentence.IsSign(end) || sentence.Is(end, {"now", "already"}))) return;
  const FiniteVerb verb = LastIn(verbs, 0, i);
  if (verb.at < 0 || verb.tense != Tense::kPresent || CountIn(verbs, 0, i) != 1) return;
  if (!LastsFor(sentence, verb.at) || sentence.AnyBefore(verb.at, {"if", "when", "to", "must", "usually"}))
    return;
  for (int at = verb.at + 1; at < i; ++at) {
    if (sentence.Is(at, {"to", "who", "that", "every"})) return;
  }
  MakePerfect(sentence, findings, verb);
}

// "Recently I am very busy", "In recent years people move to towns"
void CheckRecently(const Sentence& sentence, Findings& findings, const Verbs& verbs) {
  const bool word = sentence.Is(0, {"recently", "lately"});
  const bool years = sentence.Lower(0) == "in" && sentence.Lower(1) == "recent" &&
                     sentence.Is(2, {"years", "months", "weeks"});
  const bool soFar = sentence.Lower(0) == "so" && sentence.Lower(1) == "far" && sentence.TagAt(2) != Tag::IN;
  if (!word && !years && !soFar) return;
  const FiniteVerb verb = FirstIn(verbs, 1, sentence.Size());
  if (verb.at < 0 || verb.tense != Tense::kPresent || sentence.TagAt(verb.at + 1) == Tag::TO) return;
  MakePerfect(sentence, findings, verb);
}

}  // namespace

void CheckDuration(const Sentence& sentence, Findings& findings) {
  const Verbs verbs = FiniteVerbs(sentence);
  CheckRecently(sentence, findings, verbs);
  for (int i = 0; i < sentence.Size(); ++i) {
    if (sentence.Lower(i) == "since") CheckSince(sentence, findings, verbs, i);
    if (sentence.Lower(i) == "for" && i > 1) CheckFor(sentence, findings, verbs, i);
  }
}

}  // namespace tolvex
