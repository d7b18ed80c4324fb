// The detector: how likely is it that a sentence, and each of its tokens, is wrong?
#pragma once

#include <vector>

#include "engine/detector/network.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

/// What the detector thinks of a sentence.
struct Detection {
  float odds = 0;                   ///< sum of the tokens' odds: larger is more likely wrong
  std::vector<TokenOutput> tokens;  ///< one for each token

  int WorstToken() const;
};

class Detector {
 public:
  /// Reads "detector.*" of a file that must outlive it.
  explicit Detector(const TableFile& tables) : vocabulary_(tables), network_(tables) {}

  /// The same sentence gets the same numbers on every machine. Only the first 100 tokens are read.
  Detection Examine(const Sentence& sentence) const;

 private:
  DetectorVocabulary vocabulary_;
  DetectorNetwork network_;
};

}  // namespace tolvex
