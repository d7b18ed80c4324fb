// Time words and the tense of the verb: "yesterday I go", "I will come yesterday".
#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

// Long sentences with a year mostly describe a table or a plan of that year.
constexpr int kMostTokensOfStory = 10;

// Later years may be plans.
bool IsPastYear(const Sentence& sentence, int i) {
  const std::string& year = sentence.Lower(i);
  const bool digits = year.size() == 4 && year.find_first_not_of("0123456789") == std::string::npos;
  if (sentence.Size() > kMostTokensOfStory) return false;
  const bool ends = sentence.IsSign(i + 1) || sentence.TagAt(i + 1) == Tag::PRP || sentence.Is(i + 1, {"my"});
  return digits && ends && year >= "1800" && year < "2024";
}

bool NamesPast(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"yesterday", "ago"})) return true;
  if (sentence.Lower(i) == "in" && sentence.TagAt(i + 1) == Tag::CD) return IsPastYear(sentence, i + 1);
  return sentence.Lower(i) == "last" &&
         sentence.Is(i + 1, {"week", "year", "month", "night", "sunday", "monday", "friday", "saturday",
                             "summer", "winter", "weekend"}) &&
         !sentence.Is(i - 1, {"the", "since"});
}

bool NamesFuture(const Sentence& sentence, int i) {
  if (sentence.Lower(i) == "tomorrow") return true;
  return sentence.Lower(i) == "next" && sentence.Lower(i - 1) != "the" &&
         sentence.Is(i + 1, {"week", "year", "month"});
}

struct Verbs {
  int past = -1;
  int present = -1;
  int presentCount = 0;
  int perfect = -1;  // "have" or "has" before a participle
};

Verbs FindVerbs(const Sentence& sentence) {
  Verbs verbs;
  for (int i = 0; i < sentence.Size(); ++i) {
    const Tag tag = sentence.TagAt(i);
    if (tag == Tag::VBD ||
        sentence.Is(i, {"was", "were", "did", "had", "would", "could", "might", "'d", "used"}))
      verbs.past = i;
    const bool present = (tag == Tag::VBP || tag == Tag::VBZ) && sentence.Lacks(i, kPast);
    if (present) {
      verbs.present = verbs.present < 0 ? i : verbs.present;
      ++verbs.presentCount;
    }
    if (sentence.Is(i, {"have", "has", "'ve"}) && sentence.TagAt(i - 1) != Tag::MD &&
        (sentence.TagAt(i + 1) == Tag::VBN ||
         (IsAdverb(sentence.TagAt(i + 1)) && sentence.TagAt(i + 2) == Tag::VBN)))
      verbs.perfect = i;
  }
  return verbs;
}

std::string PastOf(const Sentence& sentence, int verb) {
  if (sentence.Is(verb, {"is", "'s", "am", "'m"})) return "was";
  if (sentence.Is(verb, {"are", "'re"})) return "were";
  return sentence.Inflected(verb, kPast);
}

bool TellsOfSpeech(const Sentence& sentence) {
  return sentence.AnyBefore(sentence.Size(), {"that", "if", "said", "says", "know", "think", "remember",
                                              "since", "than", "like", "who", "which"});
}

void CheckPastTime(const Sentence& sentence, Findings& findings, int time) {
  const Verbs verbs = FindVerbs(sentence);
  if (sentence.Lower(time + 1) == "'s" ||
      sentence.Is(time - 1, {"since", "of", "from", "by", "than", "then"}))
    return;
  if (verbs.perfect >= 0 && verbs.past < 0 && sentence.Size() < 14 && !sentence.AnyBefore(time, {"since"})) {
    const int participle =
        sentence.TagAt(verbs.perfect + 1) == Tag::VBN ? verbs.perfect + 1 : verbs.perfect + 2;
    const std::string past = participle == verbs.perfect + 1 ? PastOf(sentence, participle) : "";
    findings.Add("perfect-with-past-time", verbs.perfect, participle,
                 past.empty() ? std::vector<std::string>{} : std::vector<std::string>{past});
    return;
  }
  if (verbs.past >= 0 || verbs.present < 0 || verbs.perfect >= 0 || TellsOfSpeech(sentence)) return;
  if (sentence.Is(verbs.present, {"have", "has"}) && sentence.TagAt(verbs.present + 1) == Tag::VBN) return;
  const std::string past = PastOf(sentence, verbs.present);
  if (!past.empty()) findings.Add("past-time", verbs.present, verbs.present, {past});
}

void CheckFutureTime(const Sentence& sentence, Findings& findings) {
  const Verbs verbs = FindVerbs(sentence);
  if (verbs.past < 0 || sentence.Size() >= 12 || verbs.present >= 0 || TellsOfSpeech(sentence)) return;
  if (sentence.TagAt(verbs.past) != Tag::VBD || sentence.Is(verbs.past, {"had", "was", "were"})) return;
  const std::string base(sentence.Lemma(verbs.past));
  if (!base.empty()) findings.Add("future-time", verbs.past, verbs.past, {"will " + base});
}

// "When I was young, I live in the country."
void CheckWhenPast(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.Lower(i) != "when" || sentence.TagAt(i + 1) != Tag::PRP) return;
  const bool past = sentence.Is(i + 2, {"was", "were"}) ||
                    (sentence.TagAt(i + 2) == Tag::VBD && sentence.Lacks(i + 2, kBase));
  if (!past) return;
  for (int comma = i + 3; comma < sentence.Size() - 2; ++comma) {
    if (sentence.At(comma).text != "," || sentence.TagAt(comma + 1) != Tag::PRP) continue;
    const int verb = comma + 2;
    const bool present =
        (sentence.TagAt(verb) == Tag::VBP || sentence.TagAt(verb) == Tag::VBZ) && sentence.Lacks(verb, kPast);
    if (present && !sentence.Is(verb, {"think", "know", "remember", "believe", "guess", "have", "mean"})) {
      findings.Add("when-past", verb, verb, {PastOf(sentence, verb)});
    }
    return;
  }
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
  bool pastDone = false;
  for (int i = 0; i < sentence.Size(); ++i) {
    if (NamesPast(sentence, i) && !pastDone) {
      CheckPastTime(sentence, findings, i);
      pastDone = true;
    }
    if (NamesFuture(sentence, i)) CheckFutureTime(sentence, findings);
    CheckWhenPast(sentence, findings, i);
    CheckIfWill(sentence, findings, i);
  }
}

}  // namespace tolvex
