// The counted pairs as lines of the word bank: a phrase, and what it or its partner means.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "engine/databuild/bankbuild.h"
#include "engine/databuild/glosses.h"
#include "engine/databuild/source_files.h"
#include "engine/wordbank/pair.h"

namespace tolvex::databuild {
namespace {

using wexbin::Pair;
using wexbin::PairKind;
using wexbin::Pattern;

constexpr std::size_t kMostLines = 30;

PairKind KindOf(const std::string& code) {
  for (int kind = 0; kind < wexbin::kPairKinds; ++kind) {
    if (wexbin::CodeOf(static_cast<PairKind>(kind)) == code) return static_cast<PairKind>(kind);
  }
  throw std::runtime_error("no kind of word pairs: " + code);
}

// "partner:count:pattern"
Pair ReadPair(PairKind kind, const std::string& head, const std::string& field) {
  const auto parts = SplitAt(field, ':');
  if (parts.size() != 3) throw std::runtime_error("a damaged word pair: " + field);
  return {kind, head, parts[0], Pattern::FromCode(static_cast<std::uint8_t>(std::stoi(parts[2])))};
}

}  // namespace

void AddPairs(const std::filesystem::path& pairs, const Lexicon& lexicon, const Glosses& glosses,
              BankTexts& texts) {
  std::ifstream in = Open(pairs);
  for (std::string line; std::getline(in, line);) {
    const auto fields = SplitAt(line, '\t');
    const auto blank = fields[0].find(' ');
    const std::string head = fields[0].substr(std::min(blank, fields[0].size() - 1) + 1);
    const PairKind kind = KindOf(fields[0].substr(0, blank));
    std::string& text = texts[fields[0]];
    for (std::size_t i = 1; i < std::min(fields.size(), kMostLines + 1); ++i) {
      const Pair pair = ReadPair(kind, head, fields[i]);
      const std::string phrase = PhraseOf(pair, lexicon);
      text += phrase + '\t' + glosses.OfPair(pair, phrase) + '\n';
    }
  }
}

}  // namespace tolvex::databuild
