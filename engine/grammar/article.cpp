// "a apple", "an university", "the my book", "he is student".
#include "engine/grammar/checks.h"
#include "engine/rules/fix.h"

namespace tolvex {
namespace {

void CheckSound(const Sentence& sentence, Findings& findings, int i) {
  const bool a = sentence.Lower(i) == "a";
  if ((!a && sentence.Lower(i) != "an") || !sentence.At(i + 1).IsWord()) return;
  const Token& next = sentence.At(i + 1);
  const bool letters = next.text.size() < 2 || (IsUpper(next.text[0]) && IsUpper(next.text[1]));
  if (letters || !sentence.At(i + 1).spaceBefore || static_cast<unsigned char>(next.text[0]) > 127) return;
  const bool vowel = SoundsLikeVowel(next.lower);
  if (a == vowel) {
    const std::string better = a ? "an" : "a";
    findings.Add(a ? "an-before-vowel" : "a-before-consonant", i, i, {i == 0 ? Capitalised(better) : better});
  }
}

void CheckTwoDeterminers(const Sentence& sentence, Findings& findings, int i) {
  if (!sentence.Is(i, {"the", "a", "an"}) || sentence.At(i + 1).text == "A") return;
  if (i > 0 && sentence.At(i).text == "A") return;  // a mark, not an article
  if (sentence.Is(i + 1, {"the", "a", "an", "my", "this", "their", "his", "our", "your", "these", "some"})) {
    findings.Add("two-determiners", i, i + 1, {sentence.At(i + 1).text, sentence.At(i).text});
  }
  const bool nothingToName =
      sentence.Is(i + 1, {".",    ",",  "?",  "!",   "is",  "are", "to",  "of",   "and", "it",
                          "they", "he", "in", "for", "can", "she", "was", "were", "has", "with"});
  if (nothingToName && sentence.At(i + 1).text != "A") {
    findings.Add("article-alone", i, i, {""});
  }
}

// "he is student": a counted noun in the singular as what somebody is.
void CheckMissingArticle(const Sentence& sentence, Findings& findings, int i) {
  if (!sentence.Is(i, {"is", "am", "'m", "was", "become", "becomes", "became", "'s"}) ||
      !IsVerb(sentence.TagAt(i)))
    return;
  if (sentence.TagAt(i - 1) != Tag::PRP && !IsNoun(sentence.TagAt(i - 1))) return;
  int noun = i + 1;
  if (sentence.Lower(noun) == "not") ++noun;
  const int first = noun;
  while (sentence.TagAt(noun) == Tag::JJ && sentence.Lower(noun) != "next") ++noun;
  const bool person = findings.List("roles").count(sentence.Lower(noun)) != 0;
  if (!person || IsNoun(sentence.TagAt(noun + 1))) return;
  if (sentence.TagAt(noun) != Tag::NN || sentence.Lower(noun + 1) == "of") return;
  const std::string article = SoundsLikeVowel(sentence.Lower(first)) ? "an " : "a ";
  findings.Add("missing-a", first, noun, {article + TextOf(sentence, first, noun)});
}

}  // namespace

void CheckArticle(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    CheckSound(sentence, findings, i);
    CheckTwoDeterminers(sentence, findings, i);
    CheckMissingArticle(sentence, findings, i);
  }
}

}  // namespace tolvex
