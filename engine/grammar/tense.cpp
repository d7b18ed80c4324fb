// Time words and the tense of the verb: "yesterday I go", "I will come yesterday".
#include "engine/grammar/checks.h"
#include "engine/grammar/finite_verbs.h"
#include "engine/grammar/time_words.h"

namespace tolvex {
namespace {

using Verbs = std::vector<FiniteVerb>;

// The verb whose time a time word tells: the one before it, or the first one behind a word that opens.
FiniteVerb VerbOfTime(const Verbs& verbs, int time, int size) {
  const FiniteVerb before = LastIn(verbs, 0, time);
  return before.at >= 0 ? before : FirstIn(verbs, time, size);
}

// "the house built last year", "better than yesterday": the time belongs to something else.
bool BelongsToAnother(const Sentence& sentence, int verb, int time) {
  const bool be =
      sentence.Is(verb, {"is", "are", "am", "'s", "'re", "'m", "have", "has", "'ve", "get", "gets"});
  for (int i = verb + 1; i < time; ++i) {
    if (sentence.Is(i, {"than", "that", "who", "which", "whose", "what", "where", "how", "why", "when", "if",
                        "because"}))
      return true;
    const Tag tag = sentence.TagAt(i);
    if ((tag == Tag::VBN || tag == Tag::VBD) && !(be && i <= verb + 2)) return true;
  }
  return false;
}

// "I think he came yesterday", "as you know": what is thought now may lie in the past.
bool IsOpinion(const Sentence& sentence, int verb) {
  return sentence.Is(verb, {"think", "thinks", "know", "knows", "remember", "remembers", "believe", "guess",
                            "hope",  "say",    "says", "mean",  "means",    "wonder",    "suppose", "regret",
                            "hear",  "forget", "feel", "doubt", "bet",      "miss"}) &&
         !sentence.Is(verb - 1, {"not", "n't"});
}

// "I can't call you last night", "He will come yesterday"
void CheckModalAtPastTime(const Sentence& sentence, Findings& findings, const FiniteVerb& verb, int time) {
  const bool told = sentence.Is(verb.at + 1, {"remember", "forget", "believe", "imagine", "have", "see"});
  if (told || (verb.at < time && BelongsToAnother(sentence, verb.at, time))) return;
  if (sentence.At(sentence.Size() - 1).text == "?") return;
  if (sentence.Is(verb.at, {"can", "ca"})) findings.Add("past-time", verb.at, verb.at, {"could"});
  const std::string past = sentence.Inflected(verb.at + 1, kPast);
  if (sentence.Lower(verb.at) == "will" && !past.empty() && sentence.Has(verb.at + 1, kBase))
    findings.Add("past-time", verb.at, verb.at + 1, {past});
}

void CheckPresentAtPastTime(const Sentence& sentence, Findings& findings, const Verbs& verbs, int time) {
  const FiniteVerb verb = VerbOfTime(verbs, time, sentence.Size());
  if (verb.at >= 0 && verb.tense == Tense::kModal) CheckModalAtPastTime(sentence, findings, verb, time);
  if (verb.at < 0 || verb.tense != Tense::kPresent || IsOpinion(sentence, verb.at)) return;
  const bool opens = verb.at > time;
  if (!opens && BelongsToAnother(sentence, verb.at, time)) return;
  if (sentence.AnyBefore(sentence.Size(), {"since", "\"", "ever", "still"})) return;
  const std::string past = PastOf(sentence, verb.at);
  if (!past.empty()) findings.Add("past-time", verb.at, verb.at, {past});
}

// "have seen" as "saw"; "have been to" as "went to".
std::string PastOfPerfect(const Sentence& sentence, int have, int participle) {
  const std::string between = participle == have + 2 ? sentence.At(have + 1).text + " " : "";
  if (sentence.Lower(participle) != "been") return between + sentence.Inflected(participle, kPast);
  if (sentence.Lower(participle + 1) == "to") return between + "went";
  const bool plural = sentence.Lower(have) == "have" && sentence.Lower(have - 1) != "i";
  return (plural ? "were " : "was ") + between;
}

void CheckPerfectAtPastTime(const Sentence& sentence, Findings& findings, const Verbs& verbs, int time) {
  const FiniteVerb verb = VerbOfTime(verbs, time, sentence.Size());
  if (verb.at < 0 || verb.tense != Tense::kPerfect) return;
  if (sentence.AnyBefore(time, {"since", "until", "till"}) || sentence.Lower(time + 2) == "past") return;
  if (verb.at < time && BelongsToAnother(sentence, verb.at, time)) return;
  const int participle = sentence.TagAt(verb.at + 1) == Tag::VBN ? verb.at + 1 : verb.at + 2;
  std::string past = PastOfPerfect(sentence, verb.at, participle);
  while (past.ends_with(' ')) past.pop_back();
  if (sentence.TagAt(participle) != Tag::VBN || past.empty()) return;
  if (sentence.Lower(verb.at)[0] == '\'') past = " " + past;
  findings.Add("perfect-with-past-time", verb.at, participle, {past});
}

void CheckPastTime(const Sentence& sentence, Findings& findings, const Verbs& verbs, int time) {
  const bool other =
      sentence.Lower(time + 1) == "'s" || sentence.Lower(time + 2) == "'s" ||
      sentence.Is(time - 1, {"since", "of", "from", "by", "than", "then", "until", "till", "for", "like"});
  if (other) return;
  CheckPerfectAtPastTime(sentence, findings, verbs, time);
  CheckPresentAtPastTime(sentence, findings, verbs, time);
}

bool TellsOfSpeech(const Sentence& sentence) {
  return sentence.AnyBefore(sentence.Size(), {"that", "if", "said", "says", "know", "think", "remember",
                                              "since", "than", "like", "who", "which"});
}

void CheckPastAtFutureTime(const Sentence& sentence, Findings& findings, const FiniteVerb& verb) {
  if (verb.tense != Tense::kPast || sentence.Size() >= 12 || TellsOfSpeech(sentence)) return;
  const bool owned = sentence.Lower(verb.at) == "had" && sentence.TagAt(verb.at + 1) == Tag::DT;
  const bool other = sentence.TagAt(verb.at) != Tag::VBD || sentence.Is(verb.at, {"had", "was", "were"});
  if (other && !owned) return;
  const std::string base(sentence.Lemma(verb.at));
  if (!base.empty()) findings.Add("future-time", verb.at, verb.at, {"will " + base});
}

// "I visit my aunt next month": only what stands in a timetable may be told so.
void CheckPresentAtFutureTime(const Sentence& sentence, Findings& findings, const FiniteVerb& verb) {
  static const WordSet kTimetable = {"leave", "start", "begin",  "arrive", "open",   "close",
                                     "come",  "meet",  "return", "fly",    "finish", "stop"};
  const std::string base(sentence.Lemma(verb.at));
  const bool event = findings.List("event_verbs").count(base) != 0 || base == "rain" || base == "snow";
  if (verb.tense != Tense::kPresent || !event || kTimetable.count(base) != 0) return;
  if (verb.at == 0 || sentence.At(sentence.Size() - 1).text == "?" || TellsOfSpeech(sentence)) return;
  if (sentence.AnyBefore(verb.at, {"when", "before", "after", "until", "unless", "to", "as", "every", "make",
                                   "once", "while", "let", "what", "where", "please", ":"}))
    return;
  findings.Add("future-present", verb.at, verb.at, {"will " + base});
}

void CheckFutureTime(const Sentence& sentence, Findings& findings, const Verbs& verbs, int time) {
  if (verbs.size() != 1 || sentence.Lower(time + 1) == "'s" || sentence.Lower(time + 2) == "'s") return;
  CheckPastAtFutureTime(sentence, findings, verbs[0]);
  CheckPresentAtFutureTime(sentence, findings, verbs[0]);
}

// "If it will rain tomorrow, we will stay": no "will" behind "if" and "when".
void CheckIfWill(const Sentence& sentence, Findings& findings, int i) {
  const bool opens = i == 0 || sentence.At(i - 1).text == ",";
  if (!opens || !sentence.Is(i, {"if", "when", "unless", "until"})) return;
  const bool simpleSubject = sentence.TagAt(i + 1) == Tag::PRP;
  const int will = simpleSubject ? i + 2 : i + 3;
  if (sentence.Lower(will) != "will" || sentence.TagAt(will) != Tag::MD) return;
  if (sentence.Is(will + 1, {"follow", "excuse", "forgive", "allow", "pardon"})) return;  // a polite request
  for (int comma = will + 1; comma < sentence.Size(); ++comma) {
    if (sentence.At(comma).text != ",") continue;
    if (!sentence.Is(comma + 2, {"will", "can", "'ll", "shall", "may"}) &&
        !sentence.Is(comma + 3, {"will", "can", "'ll", "may"}))
      return;
    const bool third = sentence.Is(i + 1, {"he", "she", "it"}) || sentence.TagAt(will - 1) == Tag::NN;
    const int verb = will + 1;
    const std::string better = sentence.Lower(verb) == "be" ? (third ? "is" : "are")
                               : third                      ? sentence.Inflected(verb, kThird)
                                                            : std::string(sentence.Lemma(verb));
    if (!better.empty()) findings.Add("if-will", will, verb, {better});
    return;
  }
}

}  // namespace

void CheckTense(const Sentence& sentence, Findings& findings) {
  const Verbs verbs = FiniteVerbs(sentence);
  bool pastDone = false;
  for (int i = 0; i < sentence.Size(); ++i) {
    if (NamesPast(sentence, i) && !pastDone) {
      CheckPastTime(sentence, findings, verbs, i);
      pastDone = true;
    }
    if (NamesFuture(sentence, i)) CheckFutureTime(sentence, findings, verbs, i);
    CheckIfWill(sentence, findings, i);
  }
}

}  // namespace tolvex
