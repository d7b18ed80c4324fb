// Edits that put another word: confused pairs, other parts of speech, degrees of comparison.
#include <functional>
#include <map>

#include "base/text.h"
#include "engine/edits/proposer.h"
#include "engine/lexicon/lexicon.h"

namespace tolvex {
namespace {

// Pairs of words that learners confuse.
constexpr std::string_view kConfused =
    "then/than their/there their/they its/it to/too affect/effect lose/loose quite/quiet advice/advise "
    "where/were weather/whether who/which much/many less/fewer little/few another/other other/others "
    "live/life this/these that/those everyday/every make/do say/tell said/told me/I he/him she/her "
    "they/them we/us our/us good/well hard/hardly most/almost chose/choose past/passed though/through "
    "thing/think belief/believe then/them of/off an/and now/know form/from see/sea are/our "
    "sometime/sometimes beside/besides your/you that/than as/like so/very during/while what/that "
    "which/that what/which between/among if/whether especially/special lot/lots economic/economical "
    "sit/seat die/dead safe/save cloth/clothes by/buy one/own wear/where dose/does all/every some/any "
    "rise/raise accept/except principal/principle few/fewer worse/worst like/alike alive/live "
    "alone/lonely ago/before";

using Confusions = std::map<std::string, std::vector<std::string>, std::less<>>;

Confusions IndexPairs() {
  Confusions index;
  for (const std::string& pair : base::Split(kConfused, " ")) {
    const auto words = base::Split(pair, "/");
    index[base::Lower(words[0])].push_back(words[1]);
    index[base::Lower(words[1])].push_back(words[0]);
  }
  return index;
}

constexpr int kCommonLevel = 35;

bool IsCommon(const Lexicon& words, std::string_view text) {
  const Word* word = words.Find(text);
  return word != nullptr && word->level <= kCommonLevel;
}

}  // namespace

const std::vector<std::string>& ConfusedWith(std::string_view word) {
  static const auto kIndex = IndexPairs();
  static const std::vector<std::string> kNone;
  const auto found = kIndex.find(word);
  return found == kIndex.end() ? kNone : found->second;
}

// "She asked whether I smoked."
bool Proposer::OpensQuestion(int i) const {
  const Tag next = sentence_.TagAt(i + 1);
  return sentence_.Is(i, {"whether"}) && (next == Tag::PRP || next == Tag::PRPS || next == Tag::TO);
}

// "I hear she's famous": the pronoun is surely a subject.
bool Proposer::HasVerbJoined(int i) const {
  return sentence_.TagAt(i) == Tag::PRP && sentence_.Lower(i + 1).starts_with('\'');
}

void Proposer::ProposeOtherWord(int i) {
  const std::string& word = sentence_.Lower(i);
  for (const std::string& other : ConfusedWith(word)) {
    if (!OpensQuestion(i) && !HasVerbJoined(i)) Replace(EditKind::kConfusion, i, other);
  }
  const Token& token = sentence_.At(i);
  const Tag tag = token.tag;
  if (token.word == nullptr || (!IsNoun(tag) && !IsAdjective(tag) && !IsAdverb(tag) && !IsVerb(tag))) return;
  const Lexicon& words = sentence_.Words();
  if (sentence_.Lacks(i, kIng)) {
    for (const std::string_view other : words.Related(*token.word, Relation::kDerived)) {
      const bool isDegree = (words.Forms(other) & (kComparative | kSuperlative)) != 0;
      if (!isDegree && IsCommon(words, other)) Replace(EditKind::kDerivation, i, std::string(other));
    }
  }
  if (!IsAdjective(tag) && !IsAdverb(tag)) return;
  Replace(EditKind::kCompare, i, std::string(words.First(word, Relation::kComparative)));
  Replace(EditKind::kCompare, i, std::string(words.First(word, Relation::kSuperlative)));
  const std::string_view positive = words.First(
      word, sentence_.Has(i, kComparative) ? Relation::kIsComparativeOf : Relation::kIsSuperlativeOf);
  Replace(EditKind::kCompare, i, std::string(positive));
  if (sentence_.Has(i, kComparative))
    Replace(EditKind::kCompare, i, std::string(words.First(positive, Relation::kSuperlative)));
}

}  // namespace tolvex
