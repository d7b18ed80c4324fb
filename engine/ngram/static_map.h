// A map from 64-bit keys to small numbers that keeps no keys: two bytes an entry, wrong once in 1,000 misses.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tolvex {

/// The three cells of a key and the bits by which a stored key differs from a foreign one. The layout is that
/// of a binary fuse filter (Graf and Lemire, "Binary Fuse Filters", 2022), with values beside the
/// fingerprints.
class StaticMapLayout {
 public:
  /// A layout for so many keys; `seed` is the one that the builder could fill it with.
  StaticMapLayout(std::uint64_t keys, std::uint64_t seed);

  struct Cells {
    std::uint32_t at[3];
    std::uint16_t fingerprint;  ///< in the upper ten bits
  };
  Cells Find(std::uint64_t key) const;
  std::size_t Size() const { return (segments_ + 2) * std::size_t{segmentLength_}; }

 private:
  std::uint64_t seed_;
  std::uint32_t segmentLength_;
  std::uint32_t segments_;
};

/// Values are 0 to kMostMapValue.
inline constexpr std::uint16_t kMostMapValue = 63;

class StaticMap {
 public:
  /// `cells` as BuildStaticMap made them, after a header of two numbers: keys and seed. Throws
  /// std::runtime_error when they do not fit.
  StaticMap(std::span<const std::uint64_t> header, std::span<const std::uint16_t> cells);

  /// The value of a key, -1 when it is not in the map.
  int Find(std::uint64_t key) const;

 private:
  StaticMapLayout layout_;
  std::span<const std::uint16_t> cells_;
};

struct StaticMapItem {
  std::uint64_t key = 0;
  std::uint16_t value = 0;
};

struct StaticMapData {
  std::vector<std::uint64_t> header;
  std::vector<std::uint16_t> cells;
};

/// Builds the cells; the keys must differ. The same items in the same order give the same bytes.
StaticMapData BuildStaticMap(const std::vector<StaticMapItem>& items);

}  // namespace tolvex
