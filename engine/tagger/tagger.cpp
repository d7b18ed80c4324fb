#include "engine/tagger/tagger.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

#include "engine/tables/hash.h"

namespace tolvex {
namespace {

// Looks a hash up in an open-addressing table whose size is a power of two and which has free slots.
const TagSlot* Find(std::span<const TagSlot> slots, std::uint64_t hash) {
  const std::uint32_t key = TableKey(hash);
  for (std::size_t i = hash & (slots.size() - 1);; i = (i + 1) & (slots.size() - 1)) {
    if (slots[i].key == key) return &slots[i];
    if (slots[i].key == 0) return nullptr;
  }
}

}  // namespace

Tagger::Tagger(const TableFile& tables)
    : features_(tables.Array<TagSlot>("tag.features")),
      weights_(tables.Array<TagWeight>("tag.weights")),
      fixed_(tables.Array<TagSlot>("tag.fixed")) {
  if (!std::has_single_bit(features_.size()) || !std::has_single_bit(fixed_.size())) {
    throw std::runtime_error("damaged tagger tables");
  }
}

int Tagger::BestTag(const Features& features) const {
  std::array<std::int32_t, kTagCount> scores = {};
  for (const std::uint64_t feature : features) {
    const TagSlot* slot = Find(features_, feature);
    if (slot == nullptr) continue;
    for (std::size_t i = slot->value;; ++i) {
      scores[weights_[i].tag] += weights_[i].value;
      if (weights_[i].last != 0) break;
    }
  }
  return static_cast<int>(std::max_element(scores.begin(), scores.end()) - scores.begin());
}

void Tagger::TagAll(std::vector<Token>& tokens) const { TagRange(tokens, 0, tokens.size()); }

void Tagger::TagRange(std::vector<Token>& tokens, std::size_t first, std::size_t end) const {
  const std::vector<std::string> words = TaggerWords(tokens);
  int previous = first > 0 ? static_cast<int>(tokens[first - 1].tag) : kStartTag;
  int beforePrevious = first > 1   ? static_cast<int>(tokens[first - 2].tag)
                       : first > 0 ? kStartTag
                                   : kBeforeStartTag;
  for (std::size_t i = first; i < end; ++i) {
    const bool maybeName = i > 0 && tokens[i].IsCapitalised();
    const TagSlot* fixed = maybeName ? nullptr : Find(fixed_, HashText(words[i]));
    const int best = fixed != nullptr ? static_cast<int>(fixed->value)
                                      : BestTag(FeaturesAt(tokens, words, i, previous, beforePrevious));
    tokens[i].tag = static_cast<Tag>(best);
    beforePrevious = previous;
    previous = best;
  }
}

}  // namespace tolvex
