// The lexicon: known words with their parts of speech, frequencies and inflected forms, in mapped tables.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/tables/table_file.h"
#include "engine/text/token.h"

namespace tolvex {

/// What a word can be. A word can be several ("run": base, past participle, singular noun).
enum Form : std::uint16_t {
  kBase = 1,           ///< verb as in the dictionary: go
  kThird = 2,          ///< goes
  kPast = 4,           ///< went
  kParticiple = 8,     ///< gone
  kIng = 16,           ///< going
  kSingular = 32,      ///< noun that has a plural: apple
  kPlural = 64,        ///< apples
  kPositive = 128,     ///< adjective that is compared with -er: tall
  kComparative = 256,  ///< taller
  kSuperlative = 512,  ///< tallest
};
inline constexpr std::uint16_t kAnyVerbForm = kBase | kThird | kPast | kParticiple | kIng;

/// How two words belong together. "Is…Of" leads back to the word of the dictionary.
enum class Relation : std::uint8_t {
  kThird,
  kPast,
  kParticiple,
  kIng,
  kPlural,
  kComparative,
  kSuperlative,
  kIsThirdOf,
  kIsPastOf,
  kIsParticipleOf,
  kIsIngOf,
  kIsPluralOf,
  kIsComparativeOf,
  kIsSuperlativeOf,
  kDerived,  ///< same root, other part of speech: develop, development
};

enum Part : std::uint8_t { kNounPart = 1, kVerbPart = 2, kAdjectivePart = 4, kAdverbPart = 8 };
inline constexpr int kPartCount = 4;

/// One entry, as it is in the table "lexicon.words".
struct Word {
  std::uint32_t text = 0;     ///< offset into "lexicon.text"
  std::uint32_t links = 0;    ///< first of its links in "lexicon.links"
  std::uint32_t letters = 0;  ///< one bit for each letter in it
  std::uint16_t linkCount = 0;
  std::uint16_t forms = 0;  ///< bits of Form
  std::uint8_t length = 0;
  std::uint8_t level = 0;      ///< SCOWL size: 10 is very common, 70 rare, 255 not in SCOWL
  std::uint8_t parts = 0;      ///< bits of Part, from WordNet
  std::uint8_t frequency = 0;  ///< 8 * log2(1 + count in running text)
  std::array<std::uint8_t, kPartCount> senses = {};  ///< 8 * log2(1 + count of tagged senses) for each part
};

struct Link {
  std::uint32_t word = 0;
  Relation relation = Relation::kThird;
  std::array<std::uint8_t, 3> unused = {};
};

inline constexpr int kKnownLevel = 60;
inline constexpr int kFamiliarLevel = 40;  ///< names up to it are written with a capital by everybody

/// Reads "lexicon.*" of a file that must outlive it.
class Lexicon {
 public:
  explicit Lexicon(const TableFile& tables);

  /// The entry written exactly so, or nullptr.
  const Word* Find(std::string_view text) const;
  std::string_view Text(const Word& word) const;
  std::span<const Word> Words() const { return words_; }

  /// Whether a word is right as written; a word in small letters may also begin with a capital.
  bool Knows(std::string_view text) const;

  /// Related words, the commonest first.
  std::vector<std::string_view> Related(const Word& word, Relation relation) const;

  /// The first related word of a text; empty when there is none.
  std::string_view First(std::string_view text, Relation relation) const;

  /// The dictionary form of a verb form ("went": "go"); empty when it is none.
  std::string_view VerbLemma(std::string_view text) const;
  std::string_view NounLemma(std::string_view text) const;

  /// A verb's form, by its dictionary form: Inflect("go", kPast) is "went". Knows "be", "have" and "do".
  std::string Inflect(std::string_view lemma, Form form) const;

  std::uint16_t Forms(std::string_view text) const;
  std::uint8_t Parts(std::string_view text) const;

 private:
  std::span<const Word> words_;
  std::span<const Link> links_;
  std::span<const std::uint32_t> slots_;  // word number + 1 by hash, 0 for a free slot
  std::string_view text_;
};

/// Whether the part is by far the commonest use of a word: three times all others together.
bool IsMostly(const Word& word, Part part);

/// One bit for each letter of a word in small letters.
std::uint32_t LetterSet(std::string_view word);

}  // namespace tolvex
