// Two words that go together: how pairs are counted in running text and kept in data/engine/word_pairs.tsv.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/text/token.h"

namespace wexbin {

/// What of the head: verbs, adjectives, prepositions of a noun, adverbs of a verb, of an adjective.
enum class PairKind : std::uint8_t {
  kNounVerb,
  kNounAdjective,
  kNounPreposition,
  kVerbAdverb,
  kAdjectiveAdverb
};
inline constexpr int kPairKinds = 5;

/// CNV, CNJ, CNP, CVM, CJM.
std::string_view CodeOf(PairKind kind);

/// How the two are combined: where the partner is, and what comes before the noun.
struct Pattern {
  enum Place : std::uint8_t { kBefore, kAfter, kPassive };
  enum Determiner : std::uint8_t { kNone, kA, kThe, kOwn, kOther };
  Place place = kBefore;
  Determiner determiner = kNone;
  bool plural = false;

  std::uint8_t Code() const;
  static Pattern FromCode(std::uint8_t code);
};

/// A pair as found or as kept; the partner may be a verb with a particle or a preposition ("pick up").
struct Pair {
  PairKind kind = PairKind::kNounVerb;
  std::string head;
  std::string partner;
  Pattern pattern;
};

/// The pair as English: "make a decision", "heavy rain", "rain falls".
std::string PhraseOf(const Pair& pair, const tolvex::Lexicon& lexicon);

/// The pairs of a tagged sentence, in dictionary forms. Words that are rare, old or names are left out.
std::vector<Pair> FindPairs(const std::vector<tolvex::Token>& tokens, const tolvex::Lexicon& lexicon);

}  // namespace wexbin
