// One time in two clauses: "when the bell rang, they run out", "he opened the door and sees a man".
#include "engine/grammar/checks.h"
#include "engine/grammar/finite_verbs.h"
#include "engine/grammar/time_words.h"

namespace tolvex {
namespace {

using Verbs = std::vector<FiniteVerb>;

// How many words of a joining expression of time begin at i; none: 0.
int TimeJoiner(const Sentence& sentence, int i) {
  if (sentence.Is(i, {"when", "while", "before", "after", "until", "till"})) return 1;
  if (sentence.Lower(i) == "as" && sentence.Lower(i + 1) == "soon" && sentence.Lower(i + 2) == "as") return 3;
  if (sentence.Lower(i) == "by" && sentence.Lower(i + 1) == "the" && sentence.Lower(i + 2) == "time")
    return 3;
  return 0;
}

// Verbs whose present goes with any time: "I remember when I was a child".
bool IsTimeless(const Sentence& sentence, int verb) {
  static const WordSet kTimeless = {"think",   "know", "remember", "believe", "guess",  "mean",
                                    "suppose", "say",  "forget",   "miss",    "wonder", "regret",
                                    "love",    "hate", "prefer",   "hope",    "admit",  "show",
                                    "tell",    "look", "consider", "compare", "seem",   "prove"};
  return kTimeless.count(std::string(sentence.Lemma(verb))) != 0 ||
         (sentence.Lower(verb) == "'s" && sentence.Lower(verb - 1) == "that");
}

bool HasAny(const Sentence& sentence, int from, int to, std::initializer_list<std::string_view> words) {
  for (int i = from; i < to; ++i) {
    if (sentence.Is(i, words)) return true;
  }
  return false;
}

void MakePast(const Sentence& sentence, Findings& findings, const FiniteVerb& verb) {
  const std::string past = PastOf(sentence, verb.at);
  if (!past.empty()) findings.Add("one-time", verb.at, verb.at, {past});
}

// `sub` stands in the clause of time, `main` in the other.
void CheckPair(const Sentence& sentence, Findings& findings, const FiniteVerb& sub, const FiniteVerb& main,
               bool contrast) {
  if (sub.at < 0 || main.at < 0) return;
  if (IsSurelyPast(sentence, sub) && main.tense == Tense::kPresent && !IsTimeless(sentence, main.at))
    MakePast(sentence, findings, main);
  const bool generic = sentence.Lower(sub.at - 1) == "you" || sentence.Lower(sub.at + 1) == "to";
  if (IsSurelyPast(sentence, main) && sub.tense == Tense::kPresent && !IsTimeless(sentence, sub.at) &&
      !contrast && !generic)
    MakePast(sentence, findings, sub);
}

// "When the bell rang, they …"
void CheckOpening(const Sentence& sentence, Findings& findings, const Verbs& verbs, int length) {
  int comma = length;
  while (comma < sentence.Size() && sentence.At(comma).text != ",") ++comma;
  if (comma == sentence.Size() || CountIn(verbs, 0, comma) != 1) return;
  const FiniteVerb main = FirstIn(verbs, comma, sentence.Size());
  if (main.at < 0 || HasAny(sentence, comma, main.at, {"who", "which", "that", "what", "because", "and"}))
    return;
  CheckPair(sentence, findings, FirstIn(verbs, 0, comma), main, sentence.Lower(0) == "while");
}

// "They run out when the bell rang."
void CheckFollowing(const Sentence& sentence, Findings& findings, const Verbs& verbs, int joiner) {
  if (CountIn(verbs, 0, joiner) != 1 || CountIn(verbs, joiner, sentence.Size()) != 1) return;
  const FiniteVerb main = FirstIn(verbs, 0, joiner);
  if (HasAny(sentence, 0, joiner, {"what", "how", "that", "to", "who", "which", "where", "if", "because"}))
    return;
  if (sentence.Is(joiner - 1, {"for", "even", "of", "like", "from", "than", "about", "just", "only"})) return;
  const bool named = IsNoun(sentence.TagAt(joiner - 1)) && sentence.Is(main.at, {"is", "are", "'s"});
  if (!named) CheckPair(sentence, findings, LastIn(verbs, joiner, sentence.Size()), main, false);
}

void CheckTimeClauses(const Sentence& sentence, Findings& findings, const Verbs& verbs) {
  if (TellsOfPresent(sentence) || sentence.At(sentence.Size() - 1).text == "?") return;
  const int opening = TimeJoiner(sentence, 0);
  if (opening > 0) {
    CheckOpening(sentence, findings, verbs, opening);
    return;
  }
  for (int i = 1; i < sentence.Size(); ++i) {
    if (TimeJoiner(sentence, i) == 0) continue;
    CheckFollowing(sentence, findings, verbs, i);
    return;
  }
}

// "He retired and takes care of his garden": after a change, the present may be meant.
bool IsLastingChange(const Sentence& sentence, int verb) {
  static const WordSet kChanges = {"move", "retire", "graduate", "marry", "buy",  "become", "learn",
                                   "quit", "grow",   "start",    "build", "join", "found",  "create"};
  return kChanges.count(std::string(sentence.Lemma(verb))) != 0;
}

bool IsEvent(const Sentence& sentence, const Findings& findings, int verb) {
  const bool negated = sentence.Is(verb, {"do", "does"}) && sentence.Is(verb + 1, {"n't", "not"});
  const int event = negated ? verb + 2 : verb;
  if (sentence.Lemma(event) == "have")
    return sentence.Is(event + 1, {"breakfast", "lunch", "dinner", "supper", "a", "some"});
  return findings.List("event_verbs").count(std::string(sentence.Lemma(event))) != 0;
}

// The present verb behind "and", "then", "so" with or without a pronoun; -1 when there is none.
int JoinedVerb(const Sentence& sentence, const Verbs& verbs, int joiner) {
  int i = joiner + 1;
  while (sentence.Lower(i) == "then" || IsAdverb(sentence.TagAt(i))) ++i;
  const bool subject = sentence.Is(i, {"i", "he", "she", "it", "we", "they"});
  if (subject) ++i;
  while (IsAdverb(sentence.TagAt(i))) ++i;
  const FiniteVerb verb = FirstIn(verbs, i, i + 1);
  if (verb.at >= 0) return verb.tense == Tense::kPresent ? verb.at : -1;
  const bool bare = !subject && sentence.Lower(joiner) == "and" && sentence.TagAt(i) == Tag::VB;
  return bare && sentence.Lacks(i, kPast) && sentence.Lacks(i, kParticiple) ? i : -1;
}

void CheckJoined(const Sentence& sentence, Findings& findings, const Verbs& verbs, int joiner) {
  const FiniteVerb first = LastIn(verbs, 0, joiner);
  if (!IsSurelyPast(sentence, first) || IsLastingChange(sentence, first.at)) return;
  if (HasAny(sentence, 0, joiner,
             {"who", "which", "that", "what", "how", "where", "if", "because", "whether"}))
    return;
  const bool governed =
      HasAny(sentence, first.at, joiner, {"to", "did", "let", "made", "helped", "saw", "heard", "watched"});
  if (governed || sentence.Is(first.at, {"was", "were", "had"})) return;
  const int verb = JoinedVerb(sentence, verbs, joiner);
  if (verb < 0 || !IsEvent(sentence, findings, verb)) return;
  MakePast(sentence, findings, {verb, Tense::kPresent});
}

void CheckCoordination(const Sentence& sentence, Findings& findings, const Verbs& verbs) {
  if (TellsOfPresent(sentence)) return;
  for (int i = 2; i < sentence.Size(); ++i) {
    if (sentence.Is(i, {"and", "but", "so"}) && CountIn(verbs, 0, i) == 1)
      CheckJoined(sentence, findings, verbs, i);
  }
}

}  // namespace

void CheckTenseSequence(const Sentence& sentence, Findings& findings) {
  const Verbs verbs = FiniteVerbs(sentence);
  CheckTimeClauses(sentence, findings, verbs);
  CheckCoordination(sentence, findings, verbs);
}

}  // namespace tolvex
