#include "engine/databuild/chinese_glosses.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

#include "base/cp950.h"
#include "base/text.h"
#include "base/utf8.h"
#include "engine/databuild/source_files.h"
#include "engine/text/token.h"

namespace tolvex::databuild {
namespace {

constexpr int kLeastSignFrequency = 500;
constexpr double kLeastShare = 0.35;  // of the best candidate's score
constexpr double kRareLog = 3;        // words seen less than about ten times count as hardly known
constexpr std::size_t kLongestGloss = 6;

std::string KeyOf(std::string_view english, bool asVerb) {
  static const std::set<std::string> kSkipped = {"a", "an", "the", "one's", "sb's"};
  std::string key = asVerb ? "to" : "";
  for (const std::string& word : SplitAtBlanks(base::Lower(english))) {
    if (kSkipped.count(word) == 0) key += (key.empty() ? "" : " ") + word;
  }
  return key;
}

double LengthWeight(std::size_t signs) { return signs == 2 ? 1.0 : signs <= 3 ? 0.7 : 0.6; }

}  // namespace

ChineseGlosses::ChineseGlosses(const std::vector<CedictEntry>& entries,
                               const std::filesystem::path& frequencies) {
  ReadUses(frequencies,
           [&](const std::string& word, int count, char /*part*/) { frequencies_.emplace(word, count); });
  for (const CedictEntry& entry : entries) {
    const bool usable = !entry.isName && base::CountCharacters(entry.traditional) <= kLongestGloss;
    if (usable && !IsRareSign(entry) && base::FirstNotInCp950(entry.traditional).empty()) Add(entry);
  }
  for (auto& [key, found] : candidates_) {
    std::stable_sort(found.begin(), found.end(),
                     [](const Candidate& a, const Candidate& b) { return a.score > b.score; });
  }
}

int ChineseGlosses::Frequency(const CedictEntry& entry) const {
  const auto found = frequencies_.find(entry.simplified);
  return found == frequencies_.end() ? 0 : found->second;
}

bool ChineseGlosses::IsRareSign(const CedictEntry& entry) const {
  return base::CountCharacters(entry.traditional) == 1 && Frequency(entry) < kLeastSignFrequency;
}

double ChineseGlosses::Commonness(const CedictEntry& entry) const {
  return (0.1 + std::max(0.0, std::log2(1 + Frequency(entry)) - kRareLog)) *
         LengthWeight(base::CountCharacters(entry.traditional));
}

void ChineseGlosses::Add(const CedictEntry& entry) {
  const double word = Commonness(entry);
  double sensePlace = 1;
  for (const std::string& sense : entry.senses) {
    if (IsReference(sense)) continue;
    double piecePlace = sensePlace * (IsMarkedSense(sense) ? 4 : 1);
    for (const std::string& piece : base::Split(ReadableSense(sense), ";")) {
      const std::string key = KeyOf(WithoutParentheses(piece), false);
      if (!key.empty()) candidates_[key].push_back({entry.traditional, entry.simplified, word / piecePlace});
      piecePlace += 0.5;
    }
    sensePlace += 1;
  }
}

std::vector<std::string> ChineseGlosses::Find(std::string_view english, bool asVerb) const {
  std::vector<std::string> words;
  const auto found = candidates_.find(KeyOf(english, asVerb));
  if (found == candidates_.end()) return words;
  std::set<std::string> seen;  // two ways to write one word are one word
  for (const Candidate& candidate : found->second) {
    const bool close = candidate.score >= kLeastShare * found->second.front().score;
    if (close && seen.insert(candidate.simplified).second) words.push_back(candidate.chinese);
  }
  return words;
}

std::vector<std::string> ChineseGlosses::FindShared(std::string_view one, std::string_view other,
                                                    bool asVerb) const {
  std::vector<std::string> shared;
  const auto others = Find(other, asVerb);
  for (const std::string& word : Find(one, asVerb)) {
    if (std::find(others.begin(), others.end(), word) != others.end()) shared.push_back(word);
  }
  return shared;
}

}  // namespace tolvex::databuild
