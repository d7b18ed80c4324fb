#include "engine/detector/detector.h"

#include <algorithm>

namespace tolvex {
namespace {

constexpr std::size_t kMostTokens = 100;  // attention costs time by the square

}  // namespace

int Detection::WorstToken() const {
  const auto worst = std::ranges::max_element(tokens, {}, &TokenOutput::wrong);
  return static_cast<int>(worst - tokens.begin());
}

Detection Detector::Examine(const Sentence& sentence) const {
  auto inputs = vocabulary_.Read(sentence);
  if (inputs.size() > kMostTokens) inputs.resize(kMostTokens);
  Detection detection;
  detection.tokens = network_.Run(inputs);
  for (const TokenOutput& token : detection.tokens) detection.odds += PortableExp(token.wrong);
  return detection;
}

}  // namespace tolvex
