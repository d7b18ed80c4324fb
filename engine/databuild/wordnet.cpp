#include "engine/databuild/wordnet.h"

#include <fmt/format.h>

#include <algorithm>

#include "engine/databuild/source_files.h"

namespace tolvex::databuild {
namespace {

std::string Spaced(std::string word) {
  std::replace(word.begin(), word.end(), '_', ' ');
  return word.substr(0, word.find('('));  // an adjective's place: "afraid(p)"
}

// The gloss is definition and examples; definitions end where the first example begins.
std::string Definition(const std::string& line) {
  const auto bar = line.find("| ");
  if (bar == std::string::npos) return {};
  std::string gloss = line.substr(bar + 2);
  gloss = gloss.substr(0, gloss.find("; \""));
  const auto end = gloss.find_last_not_of(" ;");
  return end == std::string::npos ? std::string() : gloss.substr(0, end + 1);
}

std::string_view PartOf(char letter) {
  return kWordNetParts[letter == 'n' ? 0 : letter == 'v' ? 1 : letter == 'r' ? 3 : 2];
}

// offset lex_filenum ss_type w_cnt word lex_id [word lex_id...] p_cnt [symbol offset pos source/target...]
Synset ParseSynset(const std::string& line) {
  const auto fields = SplitAtBlanks(line.substr(0, line.find('|')));
  Synset synset;
  std::size_t at = 4;
  for (std::size_t left = Number(fields.at(3), 16); left > 0; --left, at += 2) {
    synset.words.push_back(Spaced(fields.at(at)));
  }
  for (std::size_t left = Number(fields.at(at++)); left > 0; --left, at += 4) {
    const std::string& symbol = fields.at(at);
    const std::size_t target = Number(fields.at(at + 1));
    const std::string& words = fields.at(at + 3);
    if (symbol == "&") synset.similar.push_back(target);
    if ((symbol != "+" && symbol != "\\") || words == "0000") continue;
    synset.derivations.push_back({Number(words.substr(0, 2), 16) - 1, PartOf(fields.at(at + 2)[0]), target,
                                  Number(words.substr(2), 16) - 1});
  }
  synset.gloss = Definition(line);
  return synset;
}

// lemma pos synset_cnt p_cnt [symbol...] sense_cnt tagsense_cnt offset...
std::vector<std::size_t> ParseSenses(const std::vector<std::string>& fields) {
  std::vector<std::size_t> senses;
  for (std::size_t at = 6 + Number(fields.at(3)); at < fields.size(); ++at) {
    senses.push_back(Number(fields[at]));
  }
  return senses;
}

// The licence at the head of each file is indented.
void ReadEntries(const std::filesystem::path& path, const LineReader& read) {
  ReadLines(path, [&](const std::string& line) {
    if (!line.starts_with("  ")) read(line);
  });
}

}  // namespace

WordNet ReadWordNet(const std::filesystem::path& folder) {
  WordNet wordnet;
  for (const std::string_view name : kWordNetParts) {
    WordNetPart& part = wordnet[std::string(name)];
    ReadEntries(folder / fmt::format("data.{}", name), [&](const std::string& line) {
      part.synsets.emplace(Number(line.substr(0, line.find(' '))), ParseSynset(line));
    });
    ReadEntries(folder / fmt::format("index.{}", name), [&](const std::string& line) {
      const auto fields = SplitAtBlanks(line);
      part.senses.emplace(Spaced(fields.at(0)), ParseSenses(fields));
    });
  }
  return wordnet;
}

}  // namespace tolvex::databuild
