// Part-of-speech tagger: an averaged perceptron over mapped weights.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/tables/table_file.h"
#include "engine/tagger/features.h"
#include "engine/text/token.h"

namespace tolvex {

/// One slot of a table with open addressing over a hash; the key of a free slot is 0.
struct TagSlot {
  std::uint32_t key = 0;
  std::uint32_t value = 0;  ///< index of a feature's first weight, or the only tag of a word
};

/// Weight of one tag for a feature. The list of a feature ends where `last` is 1.
struct TagWeight {
  std::int16_t value = 0;
  std::uint8_t tag = 0;
  std::uint8_t last = 0;
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

  std::span<const TagSlot> features_;
  std::span<const TagWeight> weights_;
  std::span<const TagSlot> fixed_;  // the words that have one tag only
};

/// The key of a hash in the tables: never 0.
constexpr std::uint32_t TableKey(std::uint64_t hash) {
  const auto key = static_cast<std::uint32_t>(hash >> 32U);
  return key == 0 ? 1 : key;
}

}  // namespace tolvex
