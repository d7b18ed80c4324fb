#include "engine/databuild/detector/detector_data.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <iostream>
#include <unordered_map>

#include "base/error.h"
#include "engine/databuild/detector/mistake_maker.h"
#include "engine/databuild/source_files.h"
#include "engine/detector/input.h"
#include "engine/tables/hash.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kVocabularyWords = 24000;
constexpr std::size_t kVocabularyLemmas = 9000;
constexpr std::size_t kShortestExample = 3;
constexpr std::size_t kLongestExample = 40;
constexpr std::uint64_t kOneHeldBack = 500;  // one sentence in so many

struct ExampleToken {
  DetectorInput input;
  std::uint8_t wrong = 0;
  std::uint8_t mistakeClass = 0;
  std::uint8_t mend = 0;
  std::uint8_t kind = 0;
};
static_assert(sizeof(ExampleToken) == 16);

struct ExampleModels {
  explicit ExampleModels(const std::filesystem::path& path)
      : tables(path), lexicon(tables), tagger(tables), ngrams(tables) {}
  TableFile tables;
  Lexicon lexicon;
  Tagger tagger;
  NgramModel ngrams;
};

// Lines that begin with "#" name the source of those after them.
template <class Take>
void ForEachLine(const std::filesystem::path& path, const Take& take) {
  std::ifstream in(path);
  if (!in) throw base::Error("cannot read " + path.string());
  std::uint64_t number = 0;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') take(number++, line);
  }
}

std::string JoinSorted(const std::unordered_map<std::string, double>& counts, std::size_t most) {
  std::vector<std::pair<double, std::string>> ranked;
  for (const auto& [word, count] : counts) ranked.emplace_back(-count, word);
  std::ranges::sort(ranked);
  if (ranked.size() > most) ranked.resize(most);
  std::vector<std::string> words;
  for (auto& [count, word] : ranked) words.push_back(std::move(word));
  std::ranges::sort(words);
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : "\n") + word;
  return text;
}

// How often a sentence is in this part of this pass. Its fate hangs on its place in the text alone.
class Portion {
 public:
  Portion(int part, int parts) : part_(part), parts_(static_cast<std::uint64_t>(parts)) {}

  int Times(std::size_t text, std::uint64_t line, double weight) const {
    const std::uint64_t place = HashPair(HashPair(1, text), line);
    const bool heldBack = place % kOneHeldBack == 0;
    if (part_ < 0 || heldBack) return part_ < 0 && heldBack ? 1 : 0;
    const std::uint64_t pass = static_cast<std::uint64_t>(part_) / parts_;
    int times = 0;
    for (std::uint64_t copy = 0; static_cast<double>(copy) < weight; ++copy) {
      const std::uint64_t own = HashPair(place, copy);
      const double share = weight - static_cast<double>(copy);
      const bool taken = static_cast<double>(HashPair(own, pass) >> 40U) < share * (1U << 24U);
      times += taken && own % parts_ == static_cast<std::uint64_t>(part_) % parts_ ? 1 : 0;
    }
    return times;
  }

 private:
  int part_;
  std::uint64_t parts_;
};

ExampleToken Labelled(const DetectorInput& input, const TokenLabel& label) {
  if (!label.wrong) return {input, 0, 0, 0, 0};
  const MistakeTraits& traits = TraitsOf(label.kind);
  return {input, 1, static_cast<std::uint8_t>(traits.mistakeClass), static_cast<std::uint8_t>(traits.mend),
          static_cast<std::uint8_t>(label.kind)};
}

std::string Marked(const LabelledSentence& made) {
  std::string text;
  for (std::size_t i = 0; i < made.tokens.size(); ++i) {
    const std::string& word = made.tokens[i].text;
    text += (made.tokens[i].spaceBefore ? " " : "") + (made.labels[i].wrong ? "[" + word + "]" : word);
  }
  return text;
}

}  // namespace

WeightedText ReadWeightedText(const std::string& argument) {
  const auto at = argument.rfind(':');
  if (at == std::string::npos) return {argument, 1};
  WeightedText text = {argument.substr(0, at), 0};
  const char* const end = argument.data() + argument.size();
  const auto result = std::from_chars(argument.data() + at + 1, end, text.weight);
  if (result.ec != std::errc() || result.ptr != end || !(text.weight > 0))
    throw base::Error("not a weight above 0: " + argument);
  return text;
}

void MakeDetectorVocabulary(const std::filesystem::path& tables, const std::filesystem::path& vocabulary,
                            const std::vector<WeightedText>& texts) {
  const ExampleModels models(tables);
  std::unordered_map<std::string, double> words;
  std::unordered_map<std::string, double> lemmas;
  for (const WeightedText& text : texts) {
    ForEachLine(text.path, [&](std::uint64_t, const std::string& line) {
      auto tokens = Tokenize(line);
      models.tagger.TagAll(tokens);
      const Sentence sentence(std::move(tokens), models.lexicon);
      for (int i = 0; i < sentence.Size(); ++i) {
        if (IsNameForDetector(sentence, i) || IsDigit(sentence.At(i).text[0])) continue;
        words[sentence.Lower(i)] += text.weight;
        if (sentence.At(i).IsWord()) lemmas[DetectorLemma(sentence, i)] += text.weight;
      }
    });
  }
  TableWriter writer;
  writer.AddText("detector.words", JoinSorted(words, kVocabularyWords));
  writer.AddText("detector.lemmas", JoinSorted(lemmas, kVocabularyLemmas));
  writer.Write(vocabulary);
}

void MakeDetectorExamples(const std::filesystem::path& tables, const std::filesystem::path& vocabulary,
                          int part, int parts, const std::filesystem::path& examples,
                          const std::vector<WeightedText>& texts) {
  if (parts < 1) throw base::Error("a pass has at least one part");
  const ExampleModels models(tables);
  const TableFile vocabularyFile(vocabulary);
  const DetectorVocabulary reader(vocabularyFile);
  MistakeMaker maker(models.lexicon, models.tagger, models.ngrams, static_cast<unsigned>(part + 1));
  const Portion portion(part, parts);
  std::vector<ExampleToken> tokens;
  std::vector<std::uint32_t> ends;
  for (std::size_t text = 0; text < texts.size(); ++text) {
    ForEachLine(texts[text].path, [&](std::uint64_t number, const std::string& line) {
      for (int times = portion.Times(text, number, texts[text].weight); times > 0; --times) {
        auto right = Tokenize(line);
        if (right.size() < kShortestExample || right.size() > kLongestExample) return;
        models.tagger.TagAll(right);
        auto made = maker.Make(std::move(right));
        const auto labels = std::move(made.labels);
        const auto inputs = reader.Read(Sentence(std::move(made.tokens), models.lexicon));
        for (std::size_t i = 0; i < inputs.size(); ++i) tokens.push_back(Labelled(inputs[i], labels[i]));
        ends.push_back(static_cast<std::uint32_t>(tokens.size()));
      }
    });
  }
  TableWriter writer;
  writer.AddArray("examples.tokens", tokens);
  writer.AddArray("examples.ends", ends);
  writer.Write(examples);
}

void ShowMistakes(const std::filesystem::path& tables, int each) {
  const ExampleModels models(tables);
  MistakeMaker maker(models.lexicon, models.tagger, models.ngrams, 1);
  std::array<int, kMistakeKindCount> shown = {};
  for (std::string line; std::getline(std::cin, line);) {
    auto right = Tokenize(line);
    if (line.starts_with('#') || right.size() < kShortestExample) continue;
    models.tagger.TagAll(right);
    const auto made = maker.MakeSo(std::move(right), 1);
    const auto wrong = std::ranges::find(made.labels, true, &TokenLabel::wrong);
    if (wrong == made.labels.end()) continue;
    const auto kind = static_cast<std::size_t>(wrong->kind);
    if (++shown[kind] <= each) fmt::print("{}\t{}\n", kind, Marked(made));
  }
  for (std::size_t kind = 0; kind < shown.size(); ++kind) fmt::print("{}\t{} times\n", kind, shown[kind]);
}

}  // namespace tolvex::databuild
