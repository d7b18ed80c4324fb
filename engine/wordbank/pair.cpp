#include "engine/wordbank/pair.h"

#include <array>

namespace wexbin {
namespace {

constexpr std::array<std::string_view, kPairKinds> kCodes = {"CNV", "CNJ", "CNP", "CVM", "CJM"};

bool StartsWithVowel(std::string_view word) { return std::string_view("aeiou").find(word[0]) != word.npos; }

std::string Determined(const std::string& noun, Pattern::Determiner determiner) {
  switch (determiner) {
    case Pattern::kA:
      return (StartsWithVowel(noun) ? "an " : "a ") + noun;
    case Pattern::kThe:
      return "the " + noun;
    case Pattern::kOwn:
      return "one's " + noun;
    default:
      return noun;
  }
}

std::string Noun(const Pair& pair, const tolvex::Lexicon& lexicon) {
  if (!pair.pattern.plural) return pair.head;
  const std::string_view plural = lexicon.First(pair.head, tolvex::Relation::kPlural);
  return plural.empty() ? pair.head : std::string(plural);
}

std::string WithSubject(const Pair& pair, const std::string& noun, const tolvex::Lexicon& lexicon) {
  return noun + ' ' + (pair.pattern.plural ? pair.partner : lexicon.Inflect(pair.partner, tolvex::kThird));
}

}  // namespace

std::string_view CodeOf(PairKind kind) { return kCodes[static_cast<std::size_t>(kind)]; }

std::uint8_t Pattern::Code() const {
  return static_cast<std::uint8_t>(place | determiner << 2U | (plural ? 1U : 0U) << 5U);
}

Pattern Pattern::FromCode(std::uint8_t code) {
  return {static_cast<Place>(code & 3U), static_cast<Determiner>((code >> 2U) & 7U), (code & 32U) != 0};
}

std::string PhraseOf(const Pair& pair, const tolvex::Lexicon& lexicon) {
  const std::string noun = Noun(pair, lexicon);
  const bool before = pair.pattern.place == Pattern::kBefore;
  switch (pair.kind) {
    case PairKind::kNounVerb:
      if (pair.pattern.place == Pattern::kAfter) return WithSubject(pair, noun, lexicon);
      return pair.partner + ' ' + Determined(noun, pair.pattern.determiner);
    case PairKind::kNounPreposition:
      return before ? pair.partner + ' ' + Determined(noun, pair.pattern.determiner)
                    : noun + ' ' + pair.partner;
    case PairKind::kNounAdjective:
      return pair.partner + ' ' + noun;
    default:
      return before ? pair.partner + ' ' + pair.head : pair.head + ' ' + pair.partner;
  }
}

}  // namespace wexbin
