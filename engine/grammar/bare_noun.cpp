// Counted nouns that stand alone: "buy umbrella", "drove me to airport"; and "a five-days trip".
#include "engine/grammar/checks.h"
#include "engine/rules/fix.h"

namespace tolvex {
namespace {

// Where the words that belong to the noun begin: "big red umbrella".
int PhraseStart(const Sentence& sentence, int noun) {
  int first = noun;
  while (sentence.TagAt(first - 1) == Tag::JJ || sentence.Is(first - 1, {"new", "old", "very"})) --first;
  return first;
}

// "day by day", "from door to door", "pen and paper": pairs go without an article.
bool IsPaired(const Sentence& sentence, int first, int noun) {
  if (sentence.Is(first - 1, {"and", "or", "by", "of", "as", "no", "per", "any", "like", "than"}))
    return true;
  if (sentence.Is(noun + 1, {"and", "or", "by", "to", "after", "-", "/", "'s", "'"})) return true;
  for (int i = 0; i < sentence.Size(); ++i) {
    if (i != noun && sentence.Lower(i) == sentence.Lower(noun)) return true;
  }
  return false;
}

bool StandsAlone(const Sentence& sentence, int first, int noun) {
  const Tag next = sentence.TagAt(noun + 1);
  const bool compound = IsNoun(next) || next == Tag::CD || next == Tag::POS || next == Tag::HYPH;
  if (compound || sentence.IsName(noun) || sentence.IsName(noun - 1) || IsPaired(sentence, first, noun))
    return false;
  const Tag before = sentence.TagAt(first - 1);
  const bool modifier =
      before == Tag::VBG && (sentence.TagAt(first - 2) == Tag::DT || sentence.TagAt(first - 2) == Tag::PRPS);
  const bool verb =
      IsVerb(before) && !modifier && sentence.Has(first - 1, kAnyVerbForm) && before != Tag::VBN;
  const bool be =
      sentence.Is(first - 1, {"is", "was", "'s"}) &&
      (sentence.TagAt(first - 2) == Tag::EX || sentence.Is(first - 2, {"this", "that", "it", "there"}));
  const bool preposition = sentence.Is(first - 1, {"with", "into", "near", "about"});
  return (verb && sentence.Lemma(first - 1) != "be") || be || preposition;
}

bool IsObjectPronoun(const Sentence& sentence, int i) {
  return sentence.Is(i, {"me", "him", "her", "us", "them", "you"}) && sentence.TagAt(i) == Tag::PRP &&
         sentence.Is(i - 1, {"give", "gave", "buy", "bought", "tell", "told", "send", "sent", "show",
                             "showed", "lend", "lent", "gives"});
}

// "in big hospital", "from small village": an adjective makes a place or thing one of many.
bool IsDescribedInPhrase(const Sentence& sentence, const Findings& findings, int first, int noun) {
  if (first == noun) return false;
  const std::string& word = sentence.Lower(noun);
  const bool counted =
      findings.List("known_places").count(word) != 0 || findings.List("single_things").count(word) != 0 ||
      findings.List("count_nouns").count(word) != 0 ||
      sentence.Is(noun, {"city", "country", "town", "building", "street", "family", "house"});
  const bool preposition =
      sentence.Is(first - 1, {"in", "at", "on", "from", "near", "like", "to", "with", "for"});
  const bool fixed = sentence.Is(
      first, {"other", "next", "last",  "first", "second",    "third", "same",    "own",  "such", "public",
              "early", "long", "short", "good",  "old",       "great", "real",    "late", "main", "full",
              "due",   "open", "mid",   "final", "different", "many",  "certain", "most"});
  const bool stage = sentence.Is(noun, {"school", "college", "university", "office", "place", "way", "reason",
                                        "thing", "word", "time", "life"});
  return counted && preposition && !fixed && !stage && !IsPaired(sentence, first, noun) &&
         !IsNoun(sentence.TagAt(noun + 1)) && !sentence.IsName(first) && !sentence.IsName(noun);
}

void CheckSingleThing(const Sentence& sentence, Findings& findings, int noun) {
  const int first = PhraseStart(sentence, noun);
  const bool described = IsDescribedInPhrase(sentence, findings, first, noun);
  if (!described && findings.List("single_things").count(sentence.Lower(noun)) == 0) return;
  const bool superlative =
      sentence.Has(first, kSuperlative) || sentence.Is(first, {"same", "first", "next", "last"});
  const bool given = IsObjectPronoun(sentence, first - 1) && !IsNoun(sentence.TagAt(noun + 1));
  if (superlative || (!given && !described && !StandsAlone(sentence, first, noun))) return;
  const std::string article = SoundsLikeVowel(sentence.Lower(first)) ? "an " : "a ";
  findings.Add("single-thing-a", first, noun, {article + TextOf(sentence, first, noun)});
}

void CheckKnownPlace(const Sentence& sentence, Findings& findings, int noun) {
  if (findings.List("known_places").count(sentence.Lower(noun)) == 0) return;
  if (!sentence.Is(noun - 1, {"to", "at", "into"}) || sentence.IsName(noun)) return;
  const Tag next = sentence.TagAt(noun + 1);
  if (IsNoun(next) || next == Tag::CD || next == Tag::POS || IsPaired(sentence, noun, noun)) return;
  findings.Add("known-place-the", noun, noun, {"the " + sentence.At(noun).text});
}

// "ten-years-old girl", "five-days trip": one token with a plural in the middle or at the end.
void CheckCompoundNumber(const Sentence& sentence, Findings& findings, int i) {
  const std::string& word = sentence.At(i).text;
  if (!sentence.Is(i - 1, {"a", "an", "the", "my", "his", "her", "our", "this"})) return;
  for (const std::string_view unit :
       {"years", "days", "hours", "minutes", "weeks", "months", "miles", "dollars"}) {
    const auto at = word.find("-" + std::string(unit));
    if (at == std::string::npos) continue;
    const std::size_t last = at + unit.size();
    const bool whole = last + 1 == word.size() || word[last + 1] == '-';
    if (!whole || (last + 1 == word.size() && !IsNoun(sentence.TagAt(i + 1)))) continue;
    findings.Add("year-old", i, i, {word.substr(0, last) + word.substr(last + 1)});
    return;
  }
}

}  // namespace

void CheckBareNoun(const Sentence& sentence, Findings& findings) {
  for (int i = 1; i < sentence.Size(); ++i) {
    CheckCompoundNumber(sentence, findings, i);
    CheckKnownPlace(sentence, findings, i);
    if (sentence.TagAt(i) == Tag::NN) CheckSingleThing(sentence, findings, i);
  }
}

}  // namespace tolvex
