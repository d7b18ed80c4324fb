// What the ranker looks at to judge an edit.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/edits/edit.h"
#include "engine/ngram/ngram_model.h"
#include "engine/sentence/sentence.h"

namespace tolvex {

inline constexpr unsigned kRankerBits = 22;

/// What the n-gram model says of an edit.
struct NgramView {
  NgramScore gain;     ///< of the edit
  NgramScore present;  ///< score of the first token that the edit touches
};

/// Indices of the weights that count for an edit, below 1 << kRankerBits.
void FeaturesOf(const Sentence& sentence, const Edit& edit, const NgramView& view,
                std::vector<std::uint32_t>& features);

}  // namespace tolvex
