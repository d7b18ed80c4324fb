// Reading WordNet's database files.
#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "engine/lexicon/lexicon.h"

namespace tolvex::databuild {

/// A word of the same root in another synset. Words are counted from 0.
struct Derivation {
  std::size_t word = 0;     ///< of the own synset
  std::string_view part;    ///< part of speech of the other synset, as in kWordNetParts
  std::size_t offset = 0;   ///< of the other synset
  std::size_t derived = 0;  ///< word of the other synset
};

struct Synset {
  std::vector<std::string> words;    ///< blanks for underscores
  std::vector<std::size_t> similar;  ///< offsets of similar adjectives
  std::vector<Derivation> derivations;
  std::string gloss;  ///< the definition without examples
};

/// One part of speech of WordNet 3.0.
struct WordNetPart {
  std::map<std::size_t, Synset> synsets;                   ///< by offset
  std::map<std::string, std::vector<std::size_t>> senses;  ///< by word, the commonest first
};

/// The parts by the endings of their files.
using WordNet = std::map<std::string, WordNetPart, std::less<>>;

/// The endings, in the order of the bits of Part.
inline constexpr std::array<std::string_view, kPartCount> kWordNetParts = {"noun", "verb", "adj", "adv"};

/// Reads index.* and data.* of a folder. Throws base::Error with file and line when one is damaged.
WordNet ReadWordNet(const std::filesystem::path& folder);

}  // namespace tolvex::databuild
