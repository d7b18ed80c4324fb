// The hash of words and features in the compiled tables. Changing it makes every table invalid.
#pragma once

#include <cstdint>
#include <string_view>

namespace tolvex {

/// FNV-1a, 64 bits.
constexpr std::uint64_t HashText(std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001b3ULL;
  }
  return hash;
}

/// Joins two hashes; the order counts. The finalizer is MurmurHash3's.
constexpr std::uint64_t HashPair(std::uint64_t a, std::uint64_t b) {
  std::uint64_t hash = a ^ (b + 0x9e3779b97f4a7c15ULL + (a << 6U) + (a >> 2U));
  hash ^= hash >> 33U;
  hash *= 0xff51afd7ed558ccdULL;
  hash ^= hash >> 33U;
  return hash;
}

}  // namespace tolvex
