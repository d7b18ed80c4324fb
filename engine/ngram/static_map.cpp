#include "engine/ngram/static_map.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "engine/tables/hash.h"

namespace tolvex {
namespace {

constexpr std::uint16_t kFingerprintMask = 0xFFC0;

std::uint32_t SegmentLength(double keys) {
  const double exponent = std::floor(std::log(keys) / std::log(3.33) + 2.25);
  return 1U << static_cast<unsigned>(std::clamp(exponent, 2.0, 18.0));
}

double CellsPerKey(double keys) {
  return std::max(1.125, 0.875 + 0.25 * std::log(1e6) / std::log(std::max(keys, 2.0)));
}

// Which cells are still shared, while cells with a single key are taken away one after another.
class Peeling {
 public:
  Peeling(const std::vector<StaticMapItem>& items, const StaticMapLayout& layout)
      : items_(items), layout_(layout), keys_(layout.Size()), mixed_(layout.Size()) {
    order_.reserve(items.size());
  }

  bool Run() {
    for (std::uint32_t i = 0; i < items_.size(); ++i) Toggle(i, 1);
    std::vector<std::uint32_t> single;
    for (std::uint32_t cell = 0; cell < keys_.size(); ++cell) {
      if (keys_[cell] == 1) single.push_back(cell);
    }
    while (!single.empty()) {
      const std::uint32_t cell = single.back();
      single.pop_back();
      if (keys_[cell] != 1) continue;
      const std::uint32_t item = mixed_[cell];
      order_.emplace_back(item, cell);
      Toggle(item, -1);
      for (const std::uint32_t other : layout_.Find(items_[item].key).at) {
        if (keys_[other] == 1) single.push_back(other);
      }
    }
    return order_.size() == items_.size();
  }

  std::vector<std::uint16_t> Fill() const {
    std::vector<std::uint16_t> cells(layout_.Size());
    for (auto step = order_.rbegin(); step != order_.rend(); ++step) {
      const auto [item, own] = *step;
      const auto found = layout_.Find(items_[item].key);
      std::uint16_t rest = found.fingerprint | items_[item].value;
      for (const std::uint32_t cell : found.at) rest ^= cells[cell];
      cells[own] ^= rest;
    }
    return cells;
  }

 private:
  void Toggle(std::uint32_t item, int by) {
    for (const std::uint32_t cell : layout_.Find(items_[item].key).at) {
      keys_[cell] += by;
      mixed_[cell] ^= item;
    }
  }

  const std::vector<StaticMapItem>& items_;
  const StaticMapLayout& layout_;
  std::vector<int> keys_;
  std::vector<std::uint32_t> mixed_;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> order_;
};

}  // namespace

StaticMapLayout::StaticMapLayout(std::uint64_t keys, std::uint64_t seed)
    : seed_(seed), segmentLength_(SegmentLength(static_cast<double>(keys))) {
  const double cells = static_cast<double>(keys) * CellsPerKey(static_cast<double>(keys));
  const auto segments = static_cast<std::uint32_t>(std::ceil(cells / segmentLength_));
  segments_ = std::max(segments, 3U) - 2;
}

StaticMapLayout::Cells StaticMapLayout::Find(std::uint64_t key) const {
  const std::uint64_t hash = HashPair(seed_, key);
  const std::uint64_t range = std::uint64_t{segments_} * segmentLength_;
  const auto first = static_cast<std::uint32_t>(((hash >> 32U) * range) >> 32U);
  const std::uint32_t mask = segmentLength_ - 1;
  const std::uint32_t second = (first + segmentLength_) ^ (static_cast<std::uint32_t>(hash >> 18U) & mask);
  const std::uint32_t third = (first + 2 * segmentLength_) ^ (static_cast<std::uint32_t>(hash) & mask);
  return {{first, second, third},
          static_cast<std::uint16_t>(hash * 0x9e3779b97f4a7c15ULL >> 48U & kFingerprintMask)};
}

StaticMap::StaticMap(std::span<const std::uint64_t> header, std::span<const std::uint16_t> cells)
    : layout_(header.size() == 2 ? header[0] : 0, header.size() == 2 ? header[1] : 0), cells_(cells) {
  if (header.size() != 2 || cells.size() != layout_.Size()) throw std::runtime_error("damaged n-gram tables");
}

int StaticMap::Find(std::uint64_t key) const {
  const auto [at, fingerprint] = layout_.Find(key);
  const std::uint16_t found = cells_[at[0]] ^ cells_[at[1]] ^ cells_[at[2]];
  return (found & kFingerprintMask) == fingerprint ? found & kMostMapValue : -1;
}

StaticMapData BuildStaticMap(const std::vector<StaticMapItem>& items) {
  constexpr std::uint64_t kMostSeeds = 100;
  for (std::uint64_t seed = 1; seed <= kMostSeeds; ++seed) {
    const StaticMapLayout layout(items.size(), seed);
    Peeling peeling(items, layout);
    if (peeling.Run()) return {{items.size(), seed}, peeling.Fill()};
  }
  throw std::runtime_error("cannot build a static map: are there keys that occur twice?");
}

}  // namespace tolvex
