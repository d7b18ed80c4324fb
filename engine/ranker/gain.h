// How much likelier an edit makes a sentence, by the n-gram model.
#pragma once

#include <vector>

#include "engine/edits/edit.h"
#include "engine/ngram/ngram_model.h"
#include "engine/sentence/sentence.h"
#include "engine/tagger/tagger.h"

namespace tolvex {

/// Measures the edits of one sentence. Only the words near an edit are tagged and scored again.
class GainMeter {
 public:
  /// All three must outlive the meter.
  GainMeter(const NgramModel& model, const Tagger& tagger, const Sentence& sentence);

  /// Logarithm of the edited sentence's score less that of the sentence as it is.
  NgramScore Gain(const Edit& edit) const;

  /// The score of token i of the unedited sentence; of the sentence's end at Size().
  const NgramScore& At(int i) const { return scores_[static_cast<std::size_t>(i)]; }

 private:
  const NgramModel& model_;
  const Tagger& tagger_;
  const Sentence& sentence_;
  std::vector<NgramSymbol> symbols_;  // start, tokens, end
  std::vector<NgramScore> scores_;    // of the tokens and the end
};

}  // namespace tolvex
