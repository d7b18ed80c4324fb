// What the tagger looks at around one word.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/text/token.h"

namespace tolvex {

inline constexpr int kFeatureCount = 18;
using Features = std::array<std::uint64_t, kFeatureCount>;

/// Pseudo-tags before the first word of a sentence.
inline constexpr int kStartTag = 60;
inline constexpr int kBeforeStartTag = 61;

/// Words as the tagger sees them: small letters, numbers and hyphenated words each one class.
std::vector<std::string> TaggerWords(const std::vector<Token>& tokens);

/// The features of word i; previous and beforePrevious are the tags already given.
Features FeaturesAt(const std::vector<Token>& tokens, const std::vector<std::string>& words, std::size_t i,
                    int previous, int beforePrevious);

}  // namespace tolvex
