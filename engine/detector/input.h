// What the detector's network reads of each token.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/sentence/sentence.h"
#include "engine/tables/table_file.h"

namespace tolvex {

/// Rows of the embeddings that belong to one token. Row 0 of each table is for "none".
struct DetectorInput {
  std::uint16_t word = 0;
  std::uint16_t lemma = 0;
  std::uint16_t start = 0;  ///< of its first letters
  std::uint16_t end = 0;    ///< of its last letters
  std::uint16_t bits = 0;   ///< ten of Form, four of Part, known to the lexicon, no letter in it
  std::uint8_t shape = 0;
  std::uint8_t tag = 0;
};

inline constexpr int kLetterRows = 4096;  // of `start` and of `end`
inline constexpr int kShapeRows = 4;
inline constexpr int kBitCount = 16;

/// The words that have a row of their own. Reads "detector.words" and "detector.lemmas" of a file that must
/// outlive it.
class DetectorVocabulary {
 public:
  static constexpr std::uint16_t kUnknown = 1;
  static constexpr std::uint16_t kNumber = 2;
  static constexpr std::uint16_t kName = 3;
  static constexpr std::uint16_t kFirstWord = 4;

  explicit DetectorVocabulary(const TableFile& tables);

  std::vector<DetectorInput> Read(const Sentence& sentence) const;

 private:
  DetectorInput ReadToken(const Sentence& sentence, int i) const;

  std::vector<std::string_view> words_;  // sorted
  std::vector<std::string_view> lemmas_;
};

/// Whether a token counts as a name: all names are one word for the network.
bool IsNameForDetector(const Sentence& sentence, int i);

/// The dictionary form of a token by its tag, or the word itself.
std::string DetectorLemma(const Sentence& sentence, int i);

}  // namespace tolvex
