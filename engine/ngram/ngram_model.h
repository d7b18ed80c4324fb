// N-gram model: how probable is a word after the words before it? Two models of order four are mixed, one
// over common words and one over the commonest words and parts of speech.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/ngram/static_map.h"
#include "engine/tables/table_file.h"
#include "engine/text/token.h"

namespace tolvex {

inline constexpr int kNgramOrder = 4;

/// A token as the two models see it.
struct NgramSymbol {
  std::uint64_t word = 0;   ///< a common word, or the part of speech of a rarer one
  std::uint64_t group = 0;  ///< one of the commonest words, or a part of speech
  bool rare = false;        ///< `word` is a part of speech
};

/// What comes before the first and after the last token.
inline constexpr NgramSymbol kNgramStart = {1, 1, false};
inline constexpr NgramSymbol kNgramEnd = {2, 2, false};

/// One slot of the vocabulary, open addressing over HashText(word). The key is the upper half of the hash,
/// made odd; 0 for a free slot.
struct NgramWord {
  std::uint32_t key = 0;
  std::uint32_t common = 0;  ///< 1: also a word of its own in the second model
};

/// Natural logarithms in both models.
struct NgramScore {
  double word = 0;
  double group = 0;
  NgramScore& operator+=(const NgramScore& other);
  NgramScore operator-(const NgramScore& other) const { return {word - other.word, group - other.group}; }
  double Mean() const { return (word + group) / 2; }
};

class NgramVocabulary {
 public:
  explicit NgramVocabulary(std::span<const NgramWord> words) : words_(words) {}
  NgramSymbol SymbolOf(const Token& token) const;

 private:
  std::span<const NgramWord> words_;
};

/// Reads "ngram.*" of a file that must outlive it.
class NgramModel {
 public:
  explicit NgramModel(const TableFile& tables);

  NgramSymbol SymbolOf(const Token& token) const { return vocabulary_.SymbolOf(token); }

  /// The logarithm of the share of symbols[at] after the symbols before it, the longest known context
  /// counting (stupid backoff, Brants et al. 2007, over discounted shares). symbols[0] is kNgramStart or a
  /// word of the sentence.
  NgramScore Score(std::span<const NgramSymbol> symbols, std::size_t at) const;

 private:
  template <class Part>
  double ScoreOf(std::span<const NgramSymbol> symbols, std::size_t at, Part part) const;

  NgramVocabulary vocabulary_;
  StaticMap shares_;
};

/// The word that counts for a token: small letters, all numbers alike.
std::string_view NgramText(const Token& token);

/// The key of an n-gram: begin with a model's own start (0 or 1) and add the symbols from the last to the
/// first.
std::uint64_t ExtendNgramKey(std::uint64_t key, std::uint64_t symbol);

/// Shares are kept in quarters of a natural logarithm.
std::uint16_t QuantisedShare(double share);
double LogShare(int quantised);

}  // namespace tolvex
