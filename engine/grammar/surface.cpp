// Capitals, end marks, doubled words, blanks around punctuation.
#include <array>

#include "engine/grammar/checks.h"

namespace tolvex {
namespace {

bool IsPause(const std::string& text) {
  return text == "," || text == "." || text == "?" || text == "!" || text == ";";
}

void CheckFirstCapital(const Sentence& sentence, Findings& findings) {
  for (int i = 0; i < sentence.Size(); ++i) {
    const Token& token = sentence.At(i);
    if (!token.IsWord() && !IsDigit(token.text[0])) continue;
    if (IsLower(token.text[0])) findings.Add("first-capital", i, i, {Capitalised(token.text)});
    return;
  }
}

// "what is it", "could you help me": but "do it" is no question.
bool IsQuestion(const Sentence& sentence) {
  if (sentence.Is(0, {"what", "who", "where", "when", "why", "how", "which", "whose"})) return true;
  const bool auxiliary = sentence.Is(0, {"do", "does", "did", "is", "are", "was", "were", "can", "could",
                                         "will", "would", "should", "may", "have", "has"});
  return auxiliary && sentence.Is(1, {"i", "you", "he", "she", "we", "they", "there", "your", "his", "her"});
}

void CheckEndMark(const Sentence& sentence, Findings& findings) {
  const int last = sentence.Size() - 1;
  static const WordSet kEnds = {".", "?", "!", "\"", "'", ")", ":", "...", "..", "'s"};
  if (last < 1 || kEnds.count(sentence.At(last).text) != 0) return;
  const std::string& word = sentence.At(last).text;
  if (word.back() == '.') return;  // "at 7 p.m."
  const std::string mark = IsQuestion(sentence) ? "?" : ".";
  const bool isPause = word == "," || word == ";";
  findings.Add("end-mark", last, last, {isPause ? mark : word + mark});
}

void CheckDoubledWord(const Sentence& sentence, Findings& findings, int i) {
  static const WordSet kMayDouble = {"that", "had",   "very", "so",  "really", "is",   "bye",
                                     "more", "many",  "no",   "ha",  "long",   "blah", "never",
                                     "far",  "again", "yes",  "her", "you"};
  const Token& token = sentence.At(i);
  if (i == 0 || !token.IsWord() || token.lower != sentence.Lower(i - 1)) return;
  if (kMayDouble.count(token.lower) == 0 && token.lower[0] != '\'') {
    findings.Add("doubled-word", i - 1, i, {sentence.At(i - 1).text});
  }
}

void CheckSpacing(const Sentence& sentence, Findings& findings, int i) {
  const Token& token = sentence.At(i);
  const Token& before = sentence.At(i - 1);
  if (i == 0) return;
  if (IsPause(token.text) && token.spaceBefore && before.text != "\"") {
    findings.Add("blank-before-mark", i - 1, i, {before.text + token.text});
  }
  if (before.text == "," && !token.spaceBefore && token.IsWord()) {
    findings.Add("blank-after-mark", i - 1, i, {", " + token.text});
  }
  const bool glued = before.text == "." && !token.spaceBefore && !before.spaceBefore &&
                     token.IsCapitalised() && token.text.size() > 1 && sentence.At(i - 2).text.size() > 3 &&
                     token.word != nullptr;
  if (glued) findings.Add("blank-after-mark", i - 1, i, {". " + token.text});
  if (before.text == "," && (token.text == "," || token.text == ".")) {
    findings.Add("doubled-mark", i - 1, i, {token.text});
  }
}

void CheckCannot(const Sentence& sentence, Findings& findings, int i) {
  const bool apart =
      sentence.Lower(i) == "not" && sentence.At(i).spaceBefore && sentence.Lower(i - 1) == "can";
  if (i > 0 && apart && !sentence.Is(i + 1, {"only", "just"}))
    findings.Add("cannot-joined", i - 1, i, {sentence.At(i - 1).text + "not"});
}

void CheckNameInSmallLetters(const Sentence& sentence, Findings& findings, int i) {
  const Token& token = sentence.At(i);
  if (!IsLower(token.text[0]) || token.text.size() < 3) return;
  if (findings.List("always_capital").count(token.lower) != 0) {
    findings.Add("name-capital", i, i, {Capitalised(token.text)});
  }
}

// "He Is my friend": small words never take a capital inside a sentence, unless it is a title.
void CheckStrayCapital(const Sentence& sentence, Findings& findings, int i) {
  const Token& token = sentence.At(i);
  if (token.text.size() == 1 && sentence.IsSign(i + 1)) return;  // a mark: "She got an A."
  const bool likeWord = token.IsCapitalised() && (token.text.size() < 2 || IsLower(token.text[1]));
  if (i == 0 || !likeWord || findings.List("small_words").count(token.lower) == 0) return;
  static const WordSet kMayOpen = {".", "\"", "'", ":", "(", "?", "!", "-", "--", "..."};
  const bool afterComma = i > 1 && sentence.At(i - 1).text == ",";
  const bool opens =
      kMayOpen.count(sentence.At(i - 1).text) != 0 || (!afterComma && !sentence.At(i - 1).IsWord());
  const bool inTitle = sentence.IsName(i - 1) || sentence.IsName(i + 1);
  if (!opens && !inTitle) findings.Add("stray-capital", i, i, {token.lower});
}

}  // namespace

void CheckSurface(const Sentence& sentence, Findings& findings) {
  CheckFirstCapital(sentence, findings);
  CheckEndMark(sentence, findings);
  for (int i = 0; i < sentence.Size(); ++i) {
    const bool initial = sentence.At(i + 1).text == ".";
    if (sentence.At(i).text == "i" && !initial && i > 0) findings.Add("capital-i", i, i, {"I"});
    CheckDoubledWord(sentence, findings, i);
    CheckSpacing(sentence, findings, i);
    CheckCannot(sentence, findings, i);
    CheckNameInSmallLetters(sentence, findings, i);
    CheckStrayCapital(sentence, findings, i);
  }
}

}  // namespace tolvex
