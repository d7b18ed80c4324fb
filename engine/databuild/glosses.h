// Short notes that explain a phrase or a sense to a learner.
#pragma once

#include <string>
#include <vector>

#include "engine/databuild/chinese_glosses.h"
#include "engine/databuild/wordnet.h"
#include "engine/wordbank/pair.h"

namespace tolvex::databuild {

class Glosses {
 public:
  Glosses(const ChineseGlosses& chinese, const WordNet& wordnet) : chinese_(chinese), wordnet_(wordnet) {}

  /// What the whole phrase means, or else what the partner does: Chinese first, English where WordNet has it.
  std::string OfPair(const wexbin::Pair& pair, const std::string& phrase) const;

  /// The note of a sense of `word` that has the near-synonym `other`.
  std::string OfSense(const std::string& word, const std::string& other, const std::string& gloss,
                      bool isVerb) const;

 private:
  std::string OfPhrase(const wexbin::Pair& pair, const std::string& phrase) const;
  std::string OfPartner(const wexbin::Pair& pair) const;
  std::string Definition(const std::string& text, std::string_view part) const;

  const ChineseGlosses& chinese_;
  const WordNet& wordnet_;
};

}  // namespace tolvex::databuild
