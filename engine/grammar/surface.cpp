// Capitals, end marks, doubled words, blanks around punctuation.
#include "engine/grammar/check.h"

namespace tolvex {
namespace {

class SurfaceCheck : Check {
 public:
  using Check::Check;

  void Run() {
    CheckFirstCapital();
    CheckEndMark();
    for (int i = 0; i < Size(); ++i) {
      if (At(i).text == "i" && i > 0 && !IsInitial(i)) Replace("capital-i", i, "I");
      CheckDoubledWord(i);
      if (i > 0) CheckSpacing(At(i - 1), i);
      CheckCannot(i);
      CheckNameInSmallLetters(i);
      CheckStrayCapital(i);
    }
  }

 private:
  // "His name is John i. Smith."
  bool IsInitial(int i) const { return Lower(i + 1) == "."; }

  void CheckFirstCapital() {
    for (int i = 0; i < Size(); ++i) {
      const Token& token = At(i);
      if (!token.IsWord() && !IsDigit(token.text[0])) continue;
      if (IsLower(token.text[0])) Replace("first-capital", i, Capitalised(token.text));
      return;
    }
  }

  void CheckEndMark() {
    const int last = Size() - 1;
    if (last < 1 || lists_["end_marks"].contains(At(last).text) || IsAbbreviation(last)) return;
    const std::string mark = AsksByItsOrder() ? "?" : ".";
    const std::string& word = At(last).text;
    Replace("end-mark", last, word == "," || word == ";" ? mark : word + mark);
  }

  // "I get up at 7 a.m."
  bool IsAbbreviation(int i) const { return At(i).text.back() == '.'; }

  // "what is it", "could you help me", unlike "do it"
  bool AsksByItsOrder() const {
    return In(0, "question_openers") || (In(0, "inverted_auxiliaries") && In(1, "asked_subjects"));
  }

  void CheckDoubledWord(int i) {
    const Token& token = At(i);
    if (i == 0 || !token.IsWord() || token.lower != Lower(i - 1) || MayDouble(i)) return;
    Replace("doubled-word", i - 1, i, At(i - 1).text);
  }

  // "He had had enough."
  bool MayDouble(int i) const { return In(i, "may_double") || Lower(i)[0] == '\''; }

  void CheckSpacing(const Token& before, int i) {
    const Token& token = At(i);
    if (IsPause(token.text) && token.spaceBefore && before.text != "\"")
      Replace("blank-before-mark", i - 1, i, before.text + token.text);
    if (before.text == "," && !token.spaceBefore && token.IsWord())
      Replace("blank-after-mark", i - 1, i, ", " + token.text);
    if (IsGluedSentence(before, i)) Replace("blank-after-mark", i - 1, i, ". " + token.text);
    if (before.text == "," && (token.text == "," || token.text == "."))
      Replace("doubled-mark", i - 1, i, token.text);
  }

  static bool IsPause(const std::string& text) {
    return text == "," || text == "." || text == "?" || text == "!" || text == ";";
  }

  // "I went home.Then I slept."
  bool IsGluedSentence(const Token& before, int i) const {
    const Token& token = At(i);
    return before.text == "." && !token.spaceBefore && !before.spaceBefore && token.IsCapitalised() &&
           token.text.size() > 1 && At(i - 2).text.size() > 3 && token.word != nullptr;
  }

  // "I can not swim."
  void CheckCannot(int i) {
    const bool apart = Lower(i) == "not" && At(i).spaceBefore && Lower(i - 1) == "can";
    if (apart && !IsNotOnly(i)) Replace("cannot-joined", i - 1, i, At(i - 1).text + "not");
  }

  // "She can not only sing but also dance."
  bool IsNotOnly(int i) const { return Is(i + 1, {"only", "just"}); }

  void CheckNameInSmallLetters(int i) {
    const std::string& text = At(i).text;
    if (IsLower(text[0]) && text.size() > 2 && In(i, "always_capital"))
      Replace("name-capital", i, Capitalised(text));
  }

  // "He Is my friend": small words never take a capital inside a sentence, unless it is a title.
  void CheckStrayCapital(int i) {
    const std::string& text = At(i).text;
    const bool likeWord = At(i).IsCapitalised() && (text.size() < 2 || IsLower(text[1]));
    if (i == 0 || !likeWord || !In(i, "small_words") || IsMark(i) || MayOpen(i) || IsInTitle(i)) return;
    Replace("stray-capital", i, Lower(i));
  }

  // "She got an A", "influenza A virus", "a line from A to B"
  bool IsMark(int i) const {
    if (At(i).text.size() != 1) return false;
    const Tag next = TagAt(i + 1);
    const bool opensPhrase = IsNoun(next) || IsAdjective(next) || IsAdverb(next);
    return IsSign(i + 1) || (Lower(i) == "a" && (IsNoun(TagAt(i - 1)) || !opensPhrase));
  }

  // "He said: The shop is closed", "1) The shop is closed"
  bool MayOpen(int i) const {
    if (In(i - 1, "marks_before_capital")) return true;
    const bool afterComma = i > 1 && IsComma(i - 1);
    return !afterComma && !At(i - 1).IsWord();
  }

  // "We read The Old Man And The Sea."
  bool IsInTitle(int i) const { return IsName(i - 1) || IsName(i + 1); }
};

}  // namespace

void CheckSurface(const Phrases& phrases, Findings& findings) { SurfaceCheck(phrases, findings).Run(); }

}  // namespace tolvex
