// The parts of one loaded engine, for tests that ask one of them alone.
#pragma once

#include <string>

#include "engine/lexicon/lexicon.h"
#include "engine/ngram/ngram_model.h"
#include "engine/ranker/ranker.h"
#include "engine/rules/fix.h"
#include "engine/sentence/sentence.h"
#include "engine/tagger/tagger.h"

namespace tolvex::test {

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

}  // namespace tolvex::test
