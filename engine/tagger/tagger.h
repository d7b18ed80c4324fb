// Part-of-speech tagger: an averaged perceptron over mapped weights.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/tables/table_file.h"
#include "engine/tagger/features.h"
#include "engine/text/token.h"

namespace tolvex {

/// One slot of the feature table, open addressing; first is the index of its weights, 0 for a free slot.
struct FeatureSlot {
  std::uint32_t key = 0;
  std::uint32_t first = 0;
};

/// Weight of one tag for a feature. The list of a feature ends where `last` is 1.
struct TagWeight {
  std::int16_t value = 0;
  std::uint8_t tag = 0;
  std::uint8_t last = 0;
};

/// A word that has one tag only, open addressing over its hash, 0 for a free slot.
struct FixedTag {
  std::uint32_t key = 0;
  std::uint32_t tag = 0;
};

/// Reads its tables "tag.features", "tag.weights" and "tag.fixed" from a file that must outlive it.
class Tagger {
 public:
  explicit Tagger(const TableFile& tables);

  /// Sets the tag of every token.
  void TagAll(std::vector<Token>& tokens) const;

  /// Sets the tags of tokens [first, end); those before have theirs already.
  void TagRange(std::vector<Token>& tokens, std::size_t first, std::size_t end) const;

 private:
  int BestTag(const Features& features) const;
  const FixedTag* Fixed(std::uint64_t hash) const;

  std::span<const FeatureSlot> features_;
  std::span<const TagWeight> weights_;
  std::span<const FixedTag> fixed_;
};

/// The key of a hash in the tables: never 0.
constexpr std::uint32_t TableKey(std::uint64_t hash) {
  const auto key = static_cast<std::uint32_t>(hash >> 32U);
  return key == 0 ? 1 : key;
}

}  // namespace tolvex
