#include "engine/databuild/wordnet.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

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

// offset lex_filenum ss_type w_cnt word lex_id [word lex_id...] p_cnt [symbol offset pos source/target...]
Synset ParseSynset(const std::string& line) {
  const auto fields = SplitAtBlanks(line.substr(0, line.find('|')));
  Synset synset;
  std::size_t at = 4;
  for (int left = std::stoi(fields.at(3), nullptr, 16); left > 0; --left, at += 2) {
    synset.words.push_back(Spaced(fields.at(at)));
  }
  for (int left = std::stoi(fields.at(at++)); left > 0; --left, at += 4) {
    const std::size_t target = std::stoul(fields.at(at + 1));
    if (fields[at] == "&") synset.similar.push_back(target);
    if (fields[at] == "@") synset.broader.push_back(target);
  }
  synset.gloss = Definition(line);
  return synset;
}

// lemma pos synset_cnt p_cnt [symbol...] sense_cnt tagsense_cnt offset...
std::vector<std::size_t> ParseSenses(const std::vector<std::string>& fields) {
  std::vector<std::size_t> senses;
  for (std::size_t at = 6 + std::stoul(fields.at(3)); at < fields.size(); ++at) {
    senses.push_back(std::stoul(fields[at]));
  }
  return senses;
}

bool IsLicence(const std::string& line) { return line.starts_with("  "); }

}  // namespace

WordNetPart ReadWordNet(const std::filesystem::path& folder, std::string_view part) {
  WordNetPart read;
  std::ifstream data = Open(folder / fmt::format("data.{}", part));
  for (std::string line; std::getline(data, line);) {
    if (!IsLicence(line)) read.synsets.emplace(std::stoul(line), ParseSynset(line));
  }
  std::ifstream index = Open(folder / fmt::format("index.{}", part));
  for (std::string line; std::getline(index, line);) {
    if (IsLicence(line)) continue;
    const auto fields = SplitAtBlanks(line);
    read.senses.emplace(Spaced(fields.at(0)), ParseSenses(fields));
  }
  return read;
}

}  // namespace tolvex::databuild
