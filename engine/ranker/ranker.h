// Which of the possible edits mends a sentence? A logistic model over hashed features.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/edits/edit.h"
#include "engine/ngram/ngram_model.h"
#include "engine/sentence/sentence.h"
#include "engine/tables/table_file.h"
#include "engine/tagger/tagger.h"

namespace tolvex {

struct RankedEdit {
  Edit edit;
  double score = 0;  ///< log odds that the edit brings the sentence nearer to what is right
};

/// Weights are kept in these parts of a natural logarithm.
inline constexpr double kRankerScale = 32;

/// Reads "ranker.weights" of a file that must outlive it, as must the n-gram model and the tagger.
class Ranker {
 public:
  Ranker(const TableFile& tables, const NgramModel& ngrams, const Tagger& tagger);

  /// All edits of the sentence, the likeliest first.
  std::vector<RankedEdit> Rank(const Sentence& sentence) const;

 private:
  const NgramModel& ngrams_;
  const Tagger& tagger_;
  std::span<const std::int8_t> weights_;
};

}  // namespace tolvex
