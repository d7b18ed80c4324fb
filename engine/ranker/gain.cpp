#include "engine/ranker/gain.h"

#include <algorithm>

namespace tolvex {
namespace {

constexpr int kBefore = 4;  // tokens around an edit that its tagging looks at
constexpr int kAfter = 5;
constexpr int kContext = kNgramOrder - 1;

}  // namespace

GainMeter::GainMeter(const NgramModel& model, const Tagger& tagger, const Sentence& sentence)
    : model_(model), tagger_(tagger), sentence_(sentence) {
  symbols_.push_back(kNgramStart);
  for (const Token& token : sentence.Tokens()) symbols_.push_back(model.SymbolOf(token));
  symbols_.push_back(kNgramEnd);
  for (std::size_t at = 1; at < symbols_.size(); ++at) scores_.push_back(model.Score(symbols_, at));
}

NgramScore GainMeter::Gain(const Edit& edit) const {
  const int size = sentence_.Size();
  const int from = std::max(0, edit.first - kBefore);
  const int to = std::min(size, edit.last + 1 + kAfter);
  const auto token = [&](int i) { return sentence_.Tokens().begin() + i; };
  const Edit local = {edit.kind, edit.first - from, edit.last - from, edit.words};
  std::vector<Token> window = Apply({token(from), token(to)}, local);
  // Tags may change from one token before the edit to one after it, and with them the scores of what
  // follows.
  const int put = static_cast<int>(edit.words.size());
  const int firstChanged = std::max(0, local.first - 1);
  const int endChanged = std::min(static_cast<int>(window.size()), local.first + put + 1);
  tagger_.TagRange(window, static_cast<std::size_t>(firstChanged), static_cast<std::size_t>(endChanged));

  std::vector<NgramSymbol> symbols;
  symbols.reserve(window.size() + 2);
  if (from == 0) symbols.push_back(kNgramStart);
  const int shift = from == 0 ? 1 : 0;
  for (const Token& each : window) symbols.push_back(model_.SymbolOf(each));
  if (to == size) symbols.push_back(kNgramEnd);
  const int newEnd = std::min(static_cast<int>(symbols.size()), endChanged + kContext + shift);
  NgramScore gain;
  for (int at = firstChanged + shift; at < newEnd; ++at)
    gain += model_.Score(symbols, static_cast<std::size_t>(at));

  const int removed = edit.last - edit.first + 1;
  const int oldEnd = newEnd - shift - put + removed + from;
  NgramScore before;
  for (int at = from + firstChanged; at < oldEnd; ++at) before += scores_[static_cast<std::size_t>(at)];
  return gain - before;
}

}  // namespace tolvex
