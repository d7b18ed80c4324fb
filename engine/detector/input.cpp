#include "engine/detector/input.h"

#include <algorithm>
#include <array>

#include "engine/tables/hash.h"

namespace tolvex {
namespace {

std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

// The place in a sorted list plus `first`, or `otherwise`.
std::uint16_t Row(const std::vector<std::string_view>& words, std::string_view word, std::size_t first,
                  std::uint16_t otherwise) {
  const auto found = std::ranges::lower_bound(words, word);
  if (found == words.end() || *found != word) return otherwise;
  return static_cast<std::uint16_t>(static_cast<std::size_t>(found - words.begin()) + first);
}

std::uint16_t LetterRow(std::string_view letters) {
  return static_cast<std::uint16_t>(1 + HashPair(HashText(letters), letters.size()) % (kLetterRows - 1));
}

std::uint8_t Shape(const Token& token, int i) {
  if (!token.IsCapitalised()) return 0;
  if (i == 0) return 1;
  const bool capitals = token.text.size() > 1 && std::ranges::none_of(token.text, IsLower);
  return capitals ? 3 : 2;
}

}  // namespace

bool IsNameForDetector(const Sentence& sentence, int i) {
  const Token& token = sentence.At(i);
  static constexpr std::array<std::string_view, 19> kTimes = {
      "monday",  "tuesday",   "wednesday", "thursday", "friday",  "saturday", "sunday",
      "january", "february",  "march",     "april",    "may",     "june",     "july",
      "august",  "september", "october",   "november", "december"};
  const bool tagged = token.tag == Tag::NNP || token.tag == Tag::NNPS;
  if (!tagged || !token.IsCapitalised() || std::ranges::count(kTimes, token.lower) > 0) return false;
  return i > 0 || token.word == nullptr || token.word->level > kKnownLevel;
}

std::string DetectorLemma(const Sentence& sentence, int i) {
  const Token& token = sentence.At(i);
  const Lexicon& words = sentence.Words();
  std::string_view lemma;
  if (IsVerb(token.tag)) lemma = words.VerbLemma(token.lower);
  if (token.tag == Tag::NNS) lemma = words.NounLemma(token.lower);
  if (token.tag == Tag::JJR || token.tag == Tag::RBR)
    lemma = words.First(token.lower, Relation::kIsComparativeOf);
  if (token.tag == Tag::JJS || token.tag == Tag::RBS)
    lemma = words.First(token.lower, Relation::kIsSuperlativeOf);
  return lemma.empty() ? token.lower : std::string(lemma);
}

DetectorVocabulary::DetectorVocabulary(const TableFile& tables)
    : words_(Lines(tables.Text("detector.words"))), lemmas_(Lines(tables.Text("detector.lemmas"))) {}

std::vector<DetectorInput> DetectorVocabulary::Read(const Sentence& sentence) const {
  std::vector<DetectorInput> inputs;
  inputs.reserve(static_cast<std::size_t>(sentence.Size()));
  for (int i = 0; i < sentence.Size(); ++i) inputs.push_back(ReadToken(sentence, i));
  return inputs;
}

DetectorInput DetectorVocabulary::ReadToken(const Sentence& sentence, int i) const {
  const Token& token = sentence.At(i);
  DetectorInput input;
  input.tag = static_cast<std::uint8_t>(token.tag);
  input.shape = Shape(token, i);
  if (IsNameForDetector(sentence, i)) {
    input.word = kName;
    return input;
  }
  if (IsDigit(token.text[0])) {
    input.word = kNumber;
    return input;
  }
  const std::string_view word = token.lower;
  input.word = Row(words_, word, kFirstWord, kUnknown);
  input.lemma = Row(lemmas_, DetectorLemma(sentence, i), 1, 0);
  input.start = LetterRow(word.substr(0, 3));
  input.end = LetterRow(word.substr(word.size() - std::min<std::size_t>(word.size(), 3)));
  if (token.word != nullptr) {
    const bool known = token.word->level <= kKnownLevel;
    input.bits =
        static_cast<std::uint16_t>(token.word->forms | (token.word->parts << 10U) | (known ? 1U << 14U : 0U));
  }
  if (!token.IsWord()) input.bits |= 1U << 15U;
  return input;
}

}  // namespace tolvex
