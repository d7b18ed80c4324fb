// Edits that put another word: confused pairs, other parts of speech, degrees of comparison.
#include <map>

#include "engine/edits/proposer.h"
#include "engine/lexicon/lexicon.h"

namespace tolvex {
namespace {

struct Pair {
  std::string_view one;
  std::string_view other;
};

constexpr std::array kConfused = {
    Pair{"then", "than"},
    Pair{"their", "there"},
    Pair{"their", "they"},
    Pair{"its", "it"},
    Pair{"to", "too"},
    Pair{"affect", "effect"},
    Pair{"lose", "loose"},
    Pair{"quite", "quiet"},
    Pair{"advice", "advise"},
    Pair{"where", "were"},
    Pair{"weather", "whether"},
    Pair{"who", "which"},
    Pair{"much", "many"},
    Pair{"less", "fewer"},
    Pair{"little", "few"},
    Pair{"another", "other"},
    Pair{"other", "others"},
    Pair{"live", "life"},
    Pair{"this", "these"},
    Pair{"that", "those"},
    Pair{"everyday", "every"},
    Pair{"make", "do"},
    Pair{"say", "tell"},
    Pair{"said", "told"},
    Pair{"me", "I"},
    Pair{"he", "him"},
    Pair{"she", "her"},
    Pair{"they", "them"},
    Pair{"we", "us"},
    Pair{"our", "us"},
    Pair{"good", "well"},
    Pair{"hard", "hardly"},
    Pair{"most", "almost"},
    Pair{"chose", "choose"},
    Pair{"past", "passed"},
    Pair{"though", "through"},
    Pair{"thing", "think"},
    Pair{"belief", "believe"},
    Pair{"then", "them"},
    Pair{"of", "off"},
    Pair{"an", "and"},
    Pair{"now", "know"},
    Pair{"form", "from"},
    Pair{"see", "sea"},
    Pair{"are", "our"},
    Pair{"sometime", "sometimes"},
    Pair{"beside", "besides"},
    Pair{"your", "you"},
    Pair{"that", "than"},
    Pair{"as", "like"},
    Pair{"so", "very"},
    Pair{"during", "while"},
    Pair{"what", "that"},
    Pair{"which", "that"},
    Pair{"what", "which"},
    Pair{"between", "among"},
    Pair{"if", "whether"},
    Pair{"especially", "special"},
    Pair{"lot", "lots"},
    Pair{"economic", "economical"},
    Pair{"sit", "seat"},
    Pair{"die", "dead"},
    Pair{"safe", "save"},
    Pair{"cloth", "clothes"},
    Pair{"by", "buy"},
    Pair{"one", "own"},
    Pair{"wear", "where"},
    Pair{"dose", "does"},
    Pair{"all", "every"},
    Pair{"some", "any"},
    Pair{"rise", "raise"},
    Pair{"accept", "except"},
    Pair{"principal", "principle"},
    Pair{"few", "fewer"},
    Pair{"worse", "worst"},
    Pair{"like", "alike"},
    Pair{"alive", "live"},
    Pair{"alone", "lonely"},
    Pair{"ago", "before"},
};

std::map<std::string_view, std::vector<std::string_view>> IndexPairs() {
  std::map<std::string_view, std::vector<std::string_view>> index;
  for (const Pair& pair : kConfused) {
    index[pair.one == "I" ? "i" : pair.one].push_back(pair.other);
    index[pair.other == "I" ? "i" : pair.other].push_back(pair.one);
  }
  return index;
}

constexpr int kCommonLevel = 35;

bool IsCommon(const Lexicon& words, std::string_view text) {
  const Word* word = words.Find(text);
  return word != nullptr && word->level <= kCommonLevel;
}

}  // namespace

const std::vector<std::string_view>& ConfusedWith(std::string_view word) {
  static const auto kIndex = IndexPairs();
  static const std::vector<std::string_view> kNone;
  const auto found = kIndex.find(word);
  return found == kIndex.end() ? kNone : found->second;
}

void Proposer::ProposeOtherWord(int i) {
  const std::string& word = sentence_.Lower(i);
  for (const std::string_view other : ConfusedWith(word))
    Replace(EditKind::kConfusion, i, std::string(other));
  const Token& token = sentence_.At(i);
  const Tag tag = token.tag;
  if (token.word == nullptr || (!IsNoun(tag) && !IsAdjective(tag) && !IsAdverb(tag) && !IsVerb(tag))) return;
  const Lexicon& words = sentence_.Words();
  if (sentence_.Lacks(i, kIng)) {
    for (const std::string_view other : words.Related(*token.word, Relation::kDerived)) {
      if (IsCommon(words, other)) Replace(EditKind::kDerivation, i, std::string(other));
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
