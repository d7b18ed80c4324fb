#include "engine/ngram/ngram_model.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

#include "engine/tables/hash.h"

namespace tolvex {
namespace {

constexpr double kStep = 0.25;
constexpr double kBackoff = -0.9162907318741551;  // ln 0.4
constexpr double kRareWord = -7;  // a part of speech covers many words; so much less is the share of each
constexpr double kUnseen = -16;
constexpr std::uint64_t kTagSalt = 0x7461670000000000ULL;

std::uint64_t TagSymbol(Tag tag) { return HashPair(kTagSalt, static_cast<std::uint64_t>(tag)); }

}  // namespace

NgramScore& NgramScore::operator+=(const NgramScore& other) {
  word += other.word;
  group += other.group;
  return *this;
}

std::string_view NgramText(const Token& token) {
  return !token.text.empty() && IsDigit(token.text[0]) ? std::string_view("#")
                                                       : std::string_view(token.lower);
}

std::uint64_t ExtendNgramKey(std::uint64_t key, std::uint64_t symbol) { return HashPair(key, symbol); }

std::uint16_t QuantisedShare(double share) {
  return static_cast<std::uint16_t>(
      std::clamp(std::lround(-std::log(share) / kStep), 0L, long{kMostMapValue}));
}

double LogShare(int quantised) { return -kStep * quantised; }

NgramSymbol NgramVocabulary::SymbolOf(const Token& token) const {
  const std::uint64_t hash = HashText(NgramText(token));
  const auto key = static_cast<std::uint32_t>(hash >> 32U) | 1U;
  const std::uint64_t tag = TagSymbol(token.tag);
  for (std::size_t i = hash & (words_.size() - 1);; i = (i + 1) & (words_.size() - 1)) {
    if (words_[i].key == 0) return {tag, tag, true};
    if (words_[i].key == key) return {hash, words_[i].common != 0 ? hash : tag, false};
  }
}

NgramModel::NgramModel(const TableFile& tables)
    : vocabulary_(tables.Array<NgramWord>("ngram.words")),
      shares_(tables.Array<std::uint64_t>("ngram.header"), tables.Array<std::uint16_t>("ngram.shares")) {
  const auto words = tables.Array<NgramWord>("ngram.words");
  const bool hasFree = std::any_of(words.begin(), words.end(), [](const auto& w) { return w.key == 0; });
  if (!std::has_single_bit(words.size()) || !hasFree) throw std::runtime_error("damaged n-gram tables");
}

template <class Part>
double NgramModel::ScoreOf(std::span<const NgramSymbol> symbols, std::size_t at, Part part) const {
  const std::size_t longest = std::min<std::size_t>(kNgramOrder, at + 1);
  std::array<std::uint64_t, kNgramOrder> keys = {};
  std::uint64_t key = part == &NgramSymbol::word ? 0 : 1;
  for (std::size_t n = 0; n < longest; ++n) keys[n] = key = ExtendNgramKey(key, symbols[at - n].*part);
  double penalty = 0;
  for (std::size_t n = longest; n-- > 0; penalty += kBackoff) {
    const int share = shares_.Find(keys[n]);
    if (share >= 0) return LogShare(share) + penalty;
  }
  return kUnseen + penalty;
}

NgramScore NgramModel::Score(std::span<const NgramSymbol> symbols, std::size_t at) const {
  const double word = ScoreOf(symbols, at, &NgramSymbol::word);
  return {word + (symbols[at].rare ? kRareWord : 0), ScoreOf(symbols, at, &NgramSymbol::group)};
}

}  // namespace tolvex
