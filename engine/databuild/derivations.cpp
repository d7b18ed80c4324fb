// Word families: WordNet's pointers between parts of speech.
#include <fmt/format.h>

#include "base/error.h"
#include "base/text.h"
#include "engine/databuild/lexicon_builder.h"

namespace tolvex::databuild {
namespace {

constexpr int kCommonLevel = 40;  // words that may be proposed as another part of speech

std::string WordOf(const WordNet& wordnet, std::string_view part, std::size_t offset, std::size_t word) {
  const auto& synsets = wordnet.find(part)->second.synsets;
  const auto found = synsets.find(offset);
  if (found == synsets.end() || word >= found->second.words.size())
    throw base::Error(fmt::format("WordNet lacks word {} of the synset {} in data.{}", word, offset, part));
  return base::Lower(found->second.words[word]);
}

}  // namespace

void LexiconBuilder::AddDerivations(const WordNet& wordnet) {
  const auto common = [&](const std::string& word) {
    const auto found = entries_.find(word);
    return found != entries_.end() && found->second.level <= kCommonLevel;
  };
  for (const auto& [part, of] : wordnet) {
    for (const auto& [offset, synset] : of.synsets) {
      for (const Derivation& derivation : synset.derivations) {
        const std::string from = WordOf(wordnet, part, offset, derivation.word);
        const std::string to = WordOf(wordnet, derivation.part, derivation.offset, derivation.derived);
        if (from == to || from.substr(0, 3) != to.substr(0, 3) || !common(from) || !common(to)) continue;
        entries_[from].links.insert({Relation::kDerived, to});
        entries_[to].links.insert({Relation::kDerived, from});
      }
    }
  }
}

}  // namespace tolvex::databuild
