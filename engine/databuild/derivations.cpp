// Word families: WordNet's pointers between parts of speech.
#include <fmt/format.h>

#include "base/text.h"
#include "engine/databuild/lexicon_builder.h"
#include "engine/databuild/source_files.h"

namespace tolvex::databuild {
namespace {

constexpr int kCommonLevel = 40;  // words that may be proposed as another part of speech

int PartOfPointer(char part) { return part == 'n' ? 0 : part == 'v' ? 1 : part == 'r' ? 3 : 2; }

struct Synset {
  std::vector<std::string> words;
  std::vector<std::array<std::string, 4>> pointers;  // symbol, offset, part, source and target
};

Synset ParseSynset(const std::string& line) {
  const auto fields = SplitAtBlanks(line.substr(0, line.find(" | ")));
  Synset synset;
  const std::size_t count = std::stoul(fields.at(3), nullptr, 16);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string& word = fields.at(4 + 2 * i);
    synset.words.push_back(base::Lower(word.substr(0, word.find('('))));
  }
  const std::size_t at = 4 + 2 * count;
  const std::size_t pointers = std::stoul(fields.at(at));
  for (std::size_t i = 0; i < pointers; ++i) {
    const std::size_t p = at + 1 + 4 * i;
    synset.pointers.push_back({fields.at(p), fields.at(p + 1), fields.at(p + 2), fields.at(p + 3)});
  }
  return synset;
}

}  // namespace

void LexiconBuilder::ReadDerivations(const std::filesystem::path& wordnet) {
  std::map<std::pair<int, std::string>, Synset> synsets;
  for (int part = 0; part < kPartCount; ++part) {
    std::ifstream in = Open(wordnet / fmt::format("data.{}", kWordNetParts[part]));
    for (std::string line; std::getline(in, line);) {
      if (line[0] != ' ') synsets[{part, line.substr(0, line.find(' '))}] = ParseSynset(line);
    }
  }
  const auto common = [&](const std::string& word) {
    const auto found = entries_.find(word);
    return found != entries_.end() && found->second.level <= kCommonLevel;
  };
  for (const auto& [key, synset] : synsets) {
    for (const auto& [symbol, offset, part, numbers] : synset.pointers) {
      if ((symbol != "+" && symbol != "\\") || numbers == "0000") continue;
      const auto target = synsets.find({PartOfPointer(part[0]), offset});
      if (target == synsets.end()) continue;
      const std::string& from = synset.words.at(std::stoul(numbers.substr(0, 2), nullptr, 16) - 1);
      const std::string& to = target->second.words.at(std::stoul(numbers.substr(2), nullptr, 16) - 1);
      if (from == to || from.substr(0, 3) != to.substr(0, 3) || !common(from) || !common(to)) continue;
      entries_[from].links.insert({Relation::kDerived, to});
      entries_[to].links.insert({Relation::kDerived, from});
    }
  }
}

}  // namespace tolvex::databuild
