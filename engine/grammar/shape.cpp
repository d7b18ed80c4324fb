// The shape of the whole sentence: no verb, two sentences joined by a comma, a missing "be".
#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

bool IsFinite(const Sentence& sentence, int i) {
  return IsFiniteVerb(sentence.TagAt(i)) ||
         sentence.Is(i, {"'s", "'re", "'m", "'ll", "'d", "is", "are", "was", "were", "am", "do", "does",
                         "did", "has", "have", "had"}) ||
         (sentence.Has(i, kPast | kThird) && IsVerb(sentence.TagAt(i)));
}

bool IsImperative(const Sentence& sentence) {
  for (int i = 0; i < sentence.Size(); ++i) {
    if (sentence.TagAt(i) != Tag::VB && !(i == 0 && sentence.Has(0, kBase))) continue;
    if (i == 0 || sentence.At(i - 1).text == "," ||
        sentence.Is(i - 1, {"please", "not", "n't", "never", "always", "just"}) ||
        IsAdverb(sentence.TagAt(i - 1)))
      return true;
  }
  return false;
}

// A plural noun that could be a verb after all: "He work hard."
bool MayHideVerb(const Sentence& sentence) {
  for (int i = 1; i < sentence.Size(); ++i) {
    if (sentence.Has(i, kBase | kThird | kPast) && !sentence.Mostly(i, kNounPart) &&
        (sentence.TagAt(i - 1) == Tag::PRP || IsNoun(sentence.TagAt(i - 1)) ||
         sentence.Is(i - 1, {"this", "that", "very", "not", "these", "both", "all", "some", "most"})))
      return true;
  }
  return false;
}

void CheckFragment(const Sentence& sentence, Findings& findings) {
  const int last = sentence.Size() - 1;
  if (sentence.Size() < 4 || sentence.At(last).text == "?" || sentence.At(last).text == "!" ||
      sentence.At(0).text == "\"")
    return;
  for (int i = 0; i <= last; ++i) {
    if (IsFinite(sentence, i)) return;
  }
  if (!IsImperative(sentence) && !MayHideVerb(sentence)) findings.Add("fragment", 0, last - 1, {});
}

// "Every time we meet, I …", "The more I read, the …": the first part is no sentence of its own.
bool TimeOpens(const Sentence& sentence) {
  return sentence.AnyBefore(4, {"time", "moment", "day", "more", "everytime", "year", "minute"});
}

void CheckCommaSplice(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.At(i).text != "," || i < 3 || TimeOpens(sentence)) return;
  const Tag first = sentence.TagAt(0);
  const bool opener = first == Tag::VBG || first == Tag::VBN || sentence.Is(0, {"had", "were", "should"});
  if (opener) return;
  const bool subject =
      sentence.Is(i + 1, {"it", "he", "she", "they", "we", "i", "this", "you"}) &&
      IsFiniteVerb(sentence.TagAt(i + 2)) &&
      !sentence.Is(i + 2, {"think", "guess", "believe", "hope", "say", "know", "said", "suppose"});
  const bool adverb = sentence.Is(i + 1, {"however", "therefore"}) && sentence.At(i + 2).text == ",";
  if ((!subject && !adverb) || sentence.At(sentence.Size() - 1).text == "?") return;
  static const WordSet kSubordinate = {
      "if",      "when",    "because", "although",  "though",   "while",    "since",   "as",      "after",
      "before",  "until",   "unless",  "where",     "whatever", "whenever", "who",     "which",   "that",
      "how",     "what",    "why",     "whether",   "even",     "once",     "for",     "by",      "in",
      "with",    "to",      "without", "said",      "says",     "say",      "think",   "believe", "guess",
      "know",    "despite", "due",     "according", "during",   "and",      "but",     "or",      "so",
      "yes",     "no",      "well",    "mean",      "opinion",  "whereas",  "however", "whose",   "not",
      "neither", "either",  "from",    "at",        "on"};
  bool finite = false;
  bool subjectBefore = false;
  for (int at = 0; at < i; ++at) {
    if (kSubordinate.count(sentence.Lower(at)) != 0 &&
        (at == 0 || sentence.Is(at, {"and", "but", "or", "so", "that", "which", "who", "if", "when",
                                     "because", "as", "while", "although", "what", "how"})))
      return;
    const bool ends = sentence.Is(at, {".", "!", "?"});  // what stands before is another sentence
    finite = !ends && (finite || IsFiniteVerb(sentence.TagAt(at)));
    subjectBefore = !ends && (subjectBefore || sentence.TagAt(at) == Tag::PRP || IsNoun(sentence.TagAt(at)) ||
                              sentence.TagAt(at) == Tag::EX);
  }
  if (finite && subjectBefore)
    findings.Add("comma-splice", i, i + 1,
                 {", and " + sentence.At(i + 1).text, "; " + sentence.At(i + 1).text});
}

// "it very important", "he not here", "they a good team"
void CheckMissingBe(const Sentence& sentence, Findings& findings, int i) {
  if (!sentence.Is(i, {"it", "he", "she", "they", "we"})) return;
  const bool opens =
      i == 0 || sentence.Is(i - 1, {",", "because", "but", "that", "so", "if", "when", "and", "think"});
  if (!opens || (sentence.Lower(i - 1) == "and" && i > 1 && IsVerb(sentence.TagAt(i - 2)))) return;
  const int next = i + 1;
  const Tag tag = sentence.TagAt(next);
  const bool adjective = (tag == Tag::JJ || tag == Tag::VBG) &&
                         sentence.Lacks(next, kBase | kThird | kPast) && !sentence.CanBe(next, kAdverbPart) &&
                         !sentence.IsName(next) && sentence.At(next).word != nullptr;
  const bool degree = sentence.Is(next, {"very", "so", "too"}) && sentence.TagAt(next + 1) == Tag::JJ;
  const bool article = sentence.Is(next, {"a", "an"});
  if (!adjective && !degree && !article) return;
  const std::string be = sentence.Is(i, {"they", "we"}) ? "are" : "is";
  findings.Add("missing-be", next, next, {be + " " + sentence.At(next).text});
}

// "He happy." is caught above; here a pronoun is followed by a word that is no verb at all.
void CheckNoVerb(const Sentence& sentence, Findings& findings, int i) {
  if (!sentence.Is(i, {"i", "he", "she", "we", "they"}) || sentence.At(i).text == "i" ||
      !sentence.StartsClause(i))
    return;
  int next = i + 1;
  while (sentence.TagAt(next) == Tag::RB && sentence.Lower(next).size() > 3) ++next;
  const Tag tag = sentence.TagAt(next);
  const bool plain = sentence.At(next).IsWord() && IsLower(sentence.At(next).text[0]);
  const bool noVerb = IsNoun(tag) || tag == Tag::VB || tag == Tag::JJ || tag == Tag::VBP;
  if (!plain || !noVerb || !sentence.Lemma(next).empty() || sentence.CanBe(next, kVerbPart | kAdverbPart))
    return;
  if (sentence.At(next).word == nullptr || sentence.At(next).word->parts == 0) return;
  findings.Add("no-verb", next, next, {});
}

}  // namespace

void CheckShape(const Sentence& sentence, Findings& findings) {
  CheckFragment(sentence, findings);
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckCommaSplice(sentence, findings, i);
    CheckMissingBe(sentence, findings, i);
    CheckNoVerb(sentence, findings, i);
  }
}

}  // namespace tolvex
