// One loaded engine and its parts for all tests of a program.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/lexicon/lexicon.h"
#include "engine/ngram/ngram_model.h"
#include "engine/ranker/ranker.h"
#include "engine/sentence/sentence.h"
#include "engine/tagger/tagger.h"
#include "engine/tolvex.h"
#include "tests/support/temp_folder.h"

namespace tolvex::test {

inline const Engine& SharedEngine() {
  static const Engine engine(ENGINE_DATA);
  return engine;
}

/// The parts of one loaded engine, for tests that ask one of them alone.
struct Models {
  TableFile tables{std::filesystem::path(ENGINE_DATA) / "tolvex.tables"};
  Lexicon lexicon{tables};
  Tagger tagger{tables};
  NgramModel ngrams{tables};
  Ranker ranker{tables, ngrams, tagger};

  Sentence Read(const std::string& text) const {
    auto tokens = Tokenize(text);
    tagger.TagAll(tokens);
    return {std::move(tokens), lexicon};
  }
};

inline const Models& SharedModels() {
  static const Models models;
  return models;
}

/// The lines that are neither empty nor comments.
inline std::vector<std::string> ReadLines(const std::filesystem::path& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  }
  return lines;
}

}  // namespace tolvex::test
