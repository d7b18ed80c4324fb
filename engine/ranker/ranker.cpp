#include "engine/ranker/ranker.h"

#include <algorithm>
#include <stdexcept>

#include "engine/ranker/features.h"
#include "engine/ranker/gain.h"

namespace tolvex {

Ranker::Ranker(const TableFile& tables, const NgramModel& ngrams, const Tagger& tagger)
    : ngrams_(ngrams), tagger_(tagger), weights_(tables.Array<std::int8_t>("ranker.weights")) {
  if (weights_.size() != std::size_t{1} << kRankerBits) throw std::runtime_error("damaged ranker table");
}

std::vector<RankedEdit> Ranker::Rank(const Sentence& sentence) const {
  const GainMeter meter(ngrams_, tagger_, sentence);
  std::vector<RankedEdit> ranked;
  std::vector<std::uint32_t> features;
  for (Edit& edit : ProposeEdits(sentence)) {
    FeaturesOf(sentence, edit, {meter.Gain(edit), meter.At(edit.first)}, features);
    int sum = 0;
    for (const std::uint32_t feature : features) sum += weights_[feature];
    ranked.push_back({std::move(edit), sum / kRankerScale});
  }
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const auto& a, const auto& b) { return a.score > b.score; });
  return ranked;
}

}  // namespace tolvex
