#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <unordered_map>

#include "engine/databuild/databuild.h"
#include "engine/databuild/training_text.h"
#include "engine/ngram/ngram_model.h"
#include "engine/tables/hash.h"
#include "engine/tagger/tagger.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kWords = 20000;      // words of the first model
constexpr std::size_t kCommonWords = 500;  // words of the second model
constexpr double kDiscount = 0.5;  // taken off each count: what was seen once is less sure than it looks

// How often an n-gram must occur to be kept: by model, then by order.
constexpr int kLeastCount[2][kNgramOrder] = {{1, 2, 2, 3}, {1, 1, 2, 3}};

struct TaggedWord {
  std::uint32_t text = 0;  // number of the distinct text
  Tag tag = Tag::XX;
};

// The tagged text, with every distinct word kept once.
struct Corpus {
  std::vector<std::string> texts;
  std::vector<std::size_t> counts;
  std::vector<std::vector<TaggedWord>> sentences;
};

Corpus ReadCorpus(const Tagger& tagger, const std::filesystem::path& slashTagged,
                  const std::filesystem::path& underscoreTagged) {
  Corpus corpus;
  std::unordered_map<std::string, std::uint32_t> numbers;
  ForEachSentence(TextPart::kNgrams, slashTagged, underscoreTagged, [&](std::vector<Token>& tokens) {
    tagger.TagAll(tokens);
    std::vector<TaggedWord> sentence;
    sentence.reserve(tokens.size());
    for (const Token& token : tokens) {
      const std::string text(NgramText(token));
      const auto [found, isNew] = numbers.emplace(text, static_cast<std::uint32_t>(numbers.size()));
      if (isNew) corpus.texts.push_back(text);
      if (isNew) corpus.counts.push_back(0);
      ++corpus.counts[found->second];
      sentence.push_back({found->second, token.tag});
    }
    corpus.sentences.push_back(std::move(sentence));
  });
  return corpus;
}

std::vector<NgramWord> ChooseVocabulary(const Corpus& corpus) {
  std::vector<std::pair<std::size_t, std::string>> ranked;
  for (std::size_t i = 0; i < corpus.texts.size(); ++i)
    ranked.emplace_back(corpus.counts[i], corpus.texts[i]);
  std::sort(ranked.begin(), ranked.end(), std::greater<>());
  ranked.resize(std::min(ranked.size(), kWords));
  std::vector<NgramWord> slots(std::size_t{1} << 16U);
  for (std::size_t rank = 0; rank < ranked.size(); ++rank) {
    const std::uint64_t hash = HashText(ranked[rank].second);
    std::size_t i = hash & (slots.size() - 1);
    while (slots[i].key != 0) i = (i + 1) & (slots.size() - 1);
    slots[i] = {static_cast<std::uint32_t>(hash >> 32U) | 1U, rank < kCommonWords ? 1U : 0U};
  }
  return slots;
}

using Symbols = std::vector<std::uint64_t>;

// The text as one model sees it: each sentence between its start and its end.
Symbols SymbolsOf(const Corpus& corpus, const NgramVocabulary& vocabulary, std::uint64_t NgramSymbol::*part) {
  Symbols symbols;
  Token token;
  std::map<std::pair<std::uint32_t, Tag>, std::uint64_t> known;
  for (const auto& sentence : corpus.sentences) {
    symbols.push_back(kNgramStart.*part);
    for (const TaggedWord& word : sentence) {
      auto [found, isNew] = known.emplace(std::pair(word.text, word.tag), 0);
      if (isNew) {
        token.text = token.lower = corpus.texts[word.text];
        token.tag = word.tag;
        found->second = vocabulary.SymbolOf(token).*part;
      }
      symbols.push_back(found->second);
    }
    symbols.push_back(kNgramEnd.*part);
  }
  return symbols;
}

struct Occurrence {
  std::uint64_t history = 0;
  std::uint64_t key = 0;
  bool operator<(const Occurrence& other) const {
    return history != other.history ? history < other.history : key < other.key;
  }
};

// Every place with n symbols inside one sentence; its start may only be the first of them.
std::vector<Occurrence> Occurrences(const Symbols& symbols, int model, int order) {
  std::vector<Occurrence> all;
  std::size_t sentenceStart = 0;
  for (std::size_t at = 0; at < symbols.size(); ++at) {
    if (symbols[at] == kNgramStart.word) {
      sentenceStart = at;
      continue;
    }
    if (at - sentenceStart + 1 < static_cast<std::size_t>(order)) continue;
    Occurrence one = {0, static_cast<std::uint64_t>(model)};
    for (int n = 0; n < order; ++n) {
      one.key = ExtendNgramKey(one.key, symbols[at - n]);
      if (n > 0) one.history = ExtendNgramKey(one.history, symbols[at - n]);
    }
    all.push_back(one);
  }
  std::sort(all.begin(), all.end());
  return all;
}

void AddShares(const std::vector<Occurrence>& all, int leastCount, std::vector<StaticMapItem>& items) {
  for (std::size_t first = 0; first < all.size();) {
    std::size_t end = first;
    while (end < all.size() && all[end].history == all[first].history) ++end;
    const auto total = static_cast<double>(end - first);
    for (std::size_t at = first; at < end;) {
      std::size_t next = at;
      while (next < end && all[next].key == all[at].key) ++next;
      const auto count = static_cast<int>(next - at);
      if (count >= leastCount) items.push_back({all[at].key, QuantisedShare((count - kDiscount) / total)});
      at = next;
    }
    first = end;
  }
}

std::vector<StaticMapItem> CollectShares(const Corpus& corpus, const NgramVocabulary& vocabulary) {
  std::vector<StaticMapItem> items;
  for (const int model : {0, 1}) {
    const Symbols symbols =
        SymbolsOf(corpus, vocabulary, model == 0 ? &NgramSymbol::word : &NgramSymbol::group);
    for (int order = 1; order <= kNgramOrder; ++order) {
      const std::size_t before = items.size();
      AddShares(Occurrences(symbols, model, order), kLeastCount[model][order - 1], items);
      fmt::print("model {} order {}: {} n-grams\n", model, order, items.size() - before);
    }
  }
  return items;
}

}  // namespace

void TrainNgrams(const std::filesystem::path& taggerModel, const std::filesystem::path& slashTagged,
                 const std::filesystem::path& underscoreTagged, const std::filesystem::path& model) {
  const TableFile taggerTables(taggerModel);
  const Corpus corpus = ReadCorpus(Tagger(taggerTables), slashTagged, underscoreTagged);
  fmt::print("{} sentences\n", corpus.sentences.size());
  const std::vector<NgramWord> words = ChooseVocabulary(corpus);
  const StaticMapData map = BuildStaticMap(CollectShares(corpus, NgramVocabulary(words)));
  TableWriter writer;
  writer.AddArray("ngram.words", words);
  writer.AddArray("ngram.header", map.header);
  writer.AddArray("ngram.shares", map.cells);
  writer.Write(model);
}

}  // namespace tolvex::databuild
