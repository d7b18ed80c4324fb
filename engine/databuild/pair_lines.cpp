// The counted pairs as lines of the word bank: a phrase, and what it or its partner means.
#include <fmt/format.h>

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "engine/databuild/bankbuild.h"
#include "engine/databuild/source_files.h"

namespace tolvex::databuild {
namespace {

using wexbin::PairKind;

constexpr std::size_t kMostLines = 30;

PairKind KindOf(std::string_view code) {
  for (int kind = 0; kind < wexbin::kPairKinds; ++kind) {
    if (wexbin::CodeOf(static_cast<PairKind>(kind)) == code) return static_cast<PairKind>(kind);
  }
  throw base::Error(fmt::format("no kind of word pairs: {}", code));
}

CountedPair ParsePair(PairKind kind, const std::string& head, const std::string& field) {
  const auto parts = base::Split(field, ":");
  if (parts.size() != 3) throw base::Error("not partner, count and pattern: " + field);
  const auto pattern = wexbin::Pattern::FromCode(static_cast<std::uint8_t>(Number(parts[2])));
  return {{kind, head, parts[0], pattern}, static_cast<int>(Number(parts[1]))};
}

}  // namespace

void ReadPairs(const std::filesystem::path& path, const PairReader& read) {
  ReadLines(path, [&](const std::string& line) {
    const auto fields = base::Split(line, "\t");
    const auto name = SplitAtBlanks(fields.at(0), 2);
    const PairKind kind = KindOf(name[0]);
    std::vector<CountedPair> pairs;
    for (std::size_t i = 1; i < fields.size(); ++i) pairs.push_back(ParsePair(kind, name[1], fields[i]));
    read(fields[0], pairs);
  });
}

void AddPairs(const std::filesystem::path& pairs, const Lexicon& lexicon, const Glosses& glosses,
              BankTexts& texts) {
  ReadPairs(pairs, [&](const std::string& key, const std::vector<CountedPair>& counted) {
    std::string& text = texts[key];
    for (std::size_t i = 0; i < std::min(counted.size(), kMostLines); ++i) {
      const std::string phrase = PhraseOf(counted[i].pair, lexicon);
      text += phrase + '\t' + glosses.OfPair(counted[i].pair, phrase) + '\n';
    }
  });
}

}  // namespace tolvex::databuild
