// Reading WordNet's database files.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "engine/lexicon/lexicon.h"

namespace tolvex::databuild {

struct Synset {
  std::vector<std::string> words;    ///< blanks for underscores
  std::vector<std::size_t> similar;  ///< offsets of similar adjectives
  std::vector<std::size_t> broader;  ///< offsets of hypernyms
  std::string gloss;                 ///< the definition without examples
};

/// One part of speech of WordNet 3.0.
struct WordNetPart {
  std::map<std::size_t, Synset> synsets;                   ///< by offset
  std::map<std::string, std::vector<std::size_t>> senses;  ///< by word, the commonest first
};

/// Reads index.PART and data.PART of a folder. Throws std::runtime_error when one cannot be read.
WordNetPart ReadWordNet(const std::filesystem::path& folder, std::string_view part);

}  // namespace tolvex::databuild
