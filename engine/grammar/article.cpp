// "a apple", "an university", "the my book", "he is student".
#include "engine/grammar/check.h"
#include "engine/rules/fix.h"

namespace tolvex {
namespace {

class ArticleCheck : Check {
 public:
  using Check::Check;

  void Run() {
    for (int i = 0; i < Size(); ++i) {
      if (IsArticleA(i) && !IsMark(i)) CheckSound(i);
      if (Is(i, {"the", "a", "an"})) CheckWhatFollows(i);
      CheckMissing(i);
    }
  }

 private:
  // "a apple", "an book"
  void CheckSound(int i) {
    const Token& next = At(i + 1);
    const bool a = Lower(i) == "a";
    if (!next.IsWord() || !next.spaceBefore || IsSpelledOut(next) || a != SoundsLikeVowel(next.lower)) return;
    const std::string better = a ? "an" : "a";
    Replace(a ? "an-before-vowel" : "a-before-consonant", i, i == 0 ? Capitalised(better) : better);
  }

  // "an MP3 player", "a U turn", "an X-ray": how it sounds is not known; neither is that of a foreign word.
  static bool IsSpelledOut(const Token& token) {
    const std::string& text = token.text;
    return text.size() < 2 || !IsLetter(text[1]) || (IsUpper(text[0]) && IsUpper(text[1])) ||
           static_cast<unsigned char>(text[0]) > 127;
  }

  // "the my book", "I saw a in the park"
  void CheckWhatFollows(int i) {
    if (IsMark(i) || IsMark(i + 1)) return;
    if (In(i + 1, "determiners_after_article"))
      findings_.Add("two-determiners", i, i + 1, {At(i + 1).text, At(i).text});
    if (In(i + 1, "never_after_article")) findings_.Add("article-alone", i, i, {""});
  }

  // "She got an A in maths", "He is on the A team."
  bool IsMark(int i) const { return i > 0 && At(i).text == "A"; }

  // "he is student": a counted noun in the singular as what somebody is.
  void CheckMissing(int i) {
    if (!In(i, "linking_verbs") || !IsVerb(TagAt(i))) return;
    if (TagAt(i - 1) != Tag::PRP && !IsNoun(TagAt(i - 1))) return;
    const int first = Lower(i + 1) == "not" ? i + 2 : i + 1;
    int noun = first;
    while (TagAt(noun) == Tag::JJ && Lower(noun) != "next") ++noun;
    if (!In(noun, "roles") || TagAt(noun) != Tag::NN || IsTitle(noun)) return;
    Replace("missing-a", first, noun, WithArticle(*this, first, noun));
  }

  // "He became manager of the shop", "She is student president."
  bool IsTitle(int noun) const { return Lower(noun + 1) == "of" || IsNoun(TagAt(noun + 1)); }
};

}  // namespace

void CheckArticle(const Phrases& phrases, Findings& findings) { ArticleCheck(phrases, findings).Run(); }

}  // namespace tolvex
