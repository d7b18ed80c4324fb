// Counted and uncounted nouns: "two student", "a books", "every students", "many water".
#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

bool IsPluralQuantity(const std::string& word) {
  static const WordSet kWords = {"many",    "several",  "few",   "these", "those", "both",
                                 "various", "numerous", "two",   "three", "four",  "five",
                                 "six",     "seven",    "eight", "nine",  "ten",   "different"};
  return kWords.count(word) != 0;
}

bool IsUncounted(const Findings& findings, const std::string& word) {
  return findings.List("uncounted").count(word) != 0;
}

int SkipAdjectives(const Sentence& sentence, int i) {
  while (sentence.TagAt(i) == Tag::JJ && sentence.Lacks(i, kPlural)) ++i;
  return i;
}

bool HasNounBehind(const Sentence& sentence, int i) {
  return IsNoun(sentence.TagAt(i + 1)) || sentence.At(i + 1).text == "-" || sentence.TagAt(i + 1) == Tag::POS;
}

// "different" before a singular noun is fine behind a determiner, and so are "a few minute walk" and the
// like.
bool IsQuantityExcused(const Sentence& sentence, int i, int noun) {
  if (sentence.Lower(i) == "different") {
    return i > 0 && (sentence.TagAt(i - 1) == Tag::DT || sentence.TagAt(i - 1) == Tag::PRPS ||
                     sentence.Is(i - 1, {"no", "very", "is", "are", "one", "any", "every", "each"}));
  }
  if (sentence.Is(noun,
                  {"percent", "hundred", "thousand", "million", "dozen", "people", "of", "more", "billion",
                   "least", "other", "tomorrow", "today", "yesterday", "tonight", "fish", "sheep", "deer"}))
    return true;
  if (sentence.Is(i, {"these", "those"}) && noun != i + 1) return true;
  if (sentence.Lower(i) == "both" && sentence.Is(noun + 1, {"and", "or"})) return true;
  return sentence.Lower(i) == "few" && sentence.Lower(noun - 1) == "more";
}

void CheckQuantity(const Sentence& sentence, Findings& findings, int i) {
  if (!IsPluralQuantity(sentence.Lower(i))) return;
  const bool bothDo = sentence.Lower(i) == "both" && sentence.Has(i + 1, kBase) && !sentence.IsSign(i + 2) &&
                      !IsVerb(sentence.TagAt(i + 2)) && !IsNoun(sentence.TagAt(i + 2));
  if (bothDo) return;
  const int noun = SkipAdjectives(sentence, i + 1);
  if (sentence.TagAt(noun) != Tag::NN || HasNounBehind(sentence, noun)) return;
  const std::string& word = sentence.Lower(noun);
  if (IsUncounted(findings, word)) {
    if (sentence.Is(i, {"many", "several", "few"}))
      findings.Add("many-uncounted", i, noun, {"much " + word, "a lot of " + word});
    return;
  }
  if (!sentence.IsSingular(noun) || IsQuantityExcused(sentence, i, noun) ||
      word.find('-') != std::string::npos)
    return;
  findings.Add("plural-after-number", noun, noun,
               {std::string(sentence.Words().First(word, Relation::kPlural))});
}

void CheckMuch(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.Lower(i) != "much" || sentence.TagAt(i + 1) != Tag::NNS || !sentence.IsPlural(i + 1)) return;
  if (IsUncounted(findings, sentence.Lower(i + 1)) || sentence.Lower(i + 1) == "news") return;
  findings.Add("much-counted", i, i, {"many"});
}

bool IsSingularDeterminer(const Sentence& sentence, int i) {
  return sentence.TagAt(i) == Tag::DT && sentence.Is(i, {"a", "an", "every", "each", "another", "this"});
}

void CheckSingularDeterminer(const Sentence& sentence, Findings& findings, int i) {
  if (!IsSingularDeterminer(sentence, i)) return;
  const int noun = SkipAdjectives(sentence, i + 1);
  for (int at = i + 1; at <= noun; ++at) {
    if (IsPluralQuantity(sentence.Lower(at)) || sentence.Is(at, {"hundred", "dozen", "great", "couple"}))
      return;
  }
  const std::string& word = sentence.Lower(noun);
  const bool article = sentence.Is(i, {"a", "an"});
  if (sentence.TagAt(noun) == Tag::NNS && sentence.IsPlural(noun) && !HasNounBehind(sentence, noun) &&
      sentence.Lower(noun + 1) != "'" &&
      !sentence.Is(noun, {"news", "means", "series", "species", "people", "data", "works", "headquarters",
                          "clothes", "trousers", "goods", "pants"})) {
    const std::string singular(sentence.Words().First(word, Relation::kIsPluralOf));
    if (sentence.Lower(i) == "another") {
      findings.Add("another-plural", i, i, {sentence.At(i).IsCapitalised() ? "Other" : "other"});
    } else if (sentence.Lower(i) == "this") {
      findings.Add("this-plural", i, i, {"these"});
    } else {
      findings.Add(article ? "a-plural" : "every-plural", noun, noun, {singular});
    }
  }
  const bool aLittle = sentence.Is(i + 1, {"little", "bit"});
  if (article && !aLittle && findings.List("never_with_a").count(word) != 0 &&
      !HasNounBehind(sentence, noun) && sentence.TagAt(noun) == Tag::NN) {
    findings.Add("a-uncounted", i, i, {""});
  }
}

// "one of my friend", "one of most popular"
void CheckOneOf(const Sentence& sentence, Findings& findings, int i) {
  if (sentence.Lower(i) != "one" || sentence.Lower(i + 1) != "of") return;
  int noun = i + 2;
  const bool determined = sentence.Is(noun, {"the", "these", "those"}) || sentence.TagAt(noun) == Tag::PRPS;
  if (!determined) {
    if (sentence.Has(noun, kSuperlative) || sentence.Is(noun, {"most", "best"}))
      findings.Add("one-of-the", noun, noun, {"the " + sentence.At(noun).text});
    return;
  }
  ++noun;
  while (IsAdjective(sentence.TagAt(noun)) || IsAdverb(sentence.TagAt(noun))) ++noun;
  if (sentence.TagAt(noun) != Tag::NN || !sentence.IsSingular(noun) || HasNounBehind(sentence, noun)) return;
  if (IsUncounted(findings, sentence.Lower(noun)) ||
      findings.List("either_number").count(sentence.Lower(noun)) != 0)
    return;
  findings.Add("one-of-plural", noun, noun,
               {std::string(sentence.Words().First(sentence.Lower(noun), Relation::kPlural))});
}

}  // namespace

void CheckNumber(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckQuantity(sentence, findings, i);
    CheckMuch(sentence, findings, i);
    CheckSingularDeterminer(sentence, findings, i);
    CheckOneOf(sentence, findings, i);
  }
}

}  // namespace tolvex
