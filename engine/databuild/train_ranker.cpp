#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/databuild/corrupter.h"
#include "engine/databuild/databuild.h"
#include "engine/databuild/training_text.h"
#include "engine/ranker/features.h"
#include "engine/ranker/gain.h"
#include "engine/ranker/ranker.h"

namespace tolvex::databuild {
namespace {

constexpr std::size_t kShortest = 4;
constexpr std::size_t kLongest = 40;
constexpr std::size_t kHeldBack = 3000;
// The tagged corpora are modern prose, as learners write it: they are used so many times.
constexpr std::size_t kModernTimes = 3;
constexpr float kRate = 0.1F;        // alpha of FTRL
constexpr float kSparseness = 0.5F;  // lambda 1

using Tokens = std::vector<Token>;

// Logistic regression by FTRL-proximal (McMahan et al., "Ad Click Prediction: a View from the Trenches",
// 2013): a weight stays zero until its feature has mattered, so that rare features do not drown the table.
class Learner {
 public:
  Learner() : cells_(std::size_t{1} << kRankerBits) {}

  float Score(const std::vector<std::uint32_t>& features) const {
    float sum = 0;
    for (const std::uint32_t feature : features) sum += cells_[feature].Weight();
    return sum;
  }

  void Learn(const std::vector<std::uint32_t>& features, bool mends) {
    const float error = 1 / (1 + std::exp(-Score(features))) - (mends ? 1.0F : 0.0F);
    for (const std::uint32_t feature : features) cells_[feature].Learn(error);
  }

  std::vector<std::int8_t> Quantised() const {
    std::vector<std::int8_t> all;
    all.reserve(cells_.size());
    for (const Cell& cell : cells_) {
      const long scaled = std::lround(cell.Weight() * kRankerScale);
      all.push_back(static_cast<std::int8_t>(std::clamp(scaled, -127L, 127L)));
    }
    return all;
  }

 private:
  struct Cell {
    float z = 0;
    float squares = 0;

    float Weight() const {
      if (std::abs(z) <= kSparseness) return 0;
      return (std::copysign(kSparseness, z) - z) / ((1 + std::sqrt(squares)) / kRate);
    }
    void Learn(float gradient) {
      const float grown = squares + gradient * gradient;
      z += gradient - (std::sqrt(grown) - std::sqrt(squares)) / kRate * Weight();
      squares = grown;
    }
  };

  std::vector<Cell> cells_;
};

std::vector<std::string> LowerWords(const Tokens& tokens) {
  std::vector<std::string> words;
  words.reserve(tokens.size());
  for (const Token& token : tokens) words.push_back(token.lower);
  return words;
}

int Distance(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  std::vector<int> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = static_cast<int>(j);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    int diagonal = row[0];
    row[0] = static_cast<int>(i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const int above = row[j];
      row[j] = std::min({above + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

// Says of each edit whether it brings a corrupted sentence nearer to the right one.
class Mending {
 public:
  Mending(const Tokens& corrupted, const Tokens& right)
      : corrupted_(corrupted),
        right_(LowerWords(right)),
        distance_(Distance(LowerWords(corrupted), right_)) {}

  bool Mends(const Edit& edit) const {
    return distance_ > 0 && Distance(LowerWords(Apply(corrupted_, edit)), right_) < distance_;
  }

 private:
  const Tokens& corrupted_;
  std::vector<std::string> right_;
  int distance_;
};

struct Tally {
  int found = 0;
  int wronglyFound = 0;
  int missed = 0;
};

class RankerTrainer {
 public:
  explicit RankerTrainer(const TableFile& tables)
      : lexicon_(tables), tagger_(tables), ngrams_(tables), corrupter_(lexicon_, tagger_) {}

  void Read(const std::filesystem::path& slashTagged, const std::filesystem::path& underscoreTagged) {
    ForEachSentence(TextPart::kRanker, slashTagged, underscoreTagged, [&](Tokens& tokens) {
      if (tokens.size() < kShortest || tokens.size() > kLongest) return;
      const bool modern = tokens.back().end == 0;  // from a treebank: without offsets
      tagger_.TagAll(tokens);
      for (std::size_t i = 1; modern && i < kModernTimes; ++i) sentences_.push_back(tokens);
      sentences_.push_back(std::move(tokens));
    });
    for (std::size_t i = sentences_.size(); i > 1; --i)
      std::swap(sentences_[i - 1], sentences_[corrupter_.Random(i)]);
  }

  void Train(std::size_t most) {
    if (sentences_.size() <= kHeldBack) throw std::runtime_error("too few sentences");
    const std::size_t count = std::min(most, sentences_.size() - kHeldBack);
    for (std::size_t i = 0; i < count; ++i) Pass(sentences_[kHeldBack + i], nullptr);
    std::array<Tally, kEditKindCount> tallies;
    for (std::size_t i = 0; i < kHeldBack; ++i) Pass(sentences_[i], &tallies);
    fmt::print("trained on {} sentences\n", count);
    for (int kind = 0; kind < kEditKindCount; ++kind) {
      const Tally& tally = tallies[static_cast<std::size_t>(kind)];
      fmt::print("kind {}: found {} of {}, wrongly {}\n", kind, tally.found, tally.found + tally.missed,
                 tally.wronglyFound);
    }
  }

  std::vector<std::int8_t> Weights() const { return learner_.Quantised(); }

 private:
  // Corrupts a sentence and learns from all its edits, or counts what the learner makes of them.
  void Pass(const Tokens& right, std::array<Tally, kEditKindCount>* tallies) {
    const Tokens corrupted = corrupter_.Corrupt(right);
    const Sentence sentence(corrupted, lexicon_);
    const Mending mending(corrupted, right);
    const GainMeter meter(ngrams_, tagger_, sentence);
    std::vector<std::uint32_t> features;
    for (const Edit& edit : ProposeEdits(sentence)) {
      FeaturesOf(sentence, edit, {meter.Gain(edit), meter.At(edit.first)}, features);
      const bool mends = mending.Mends(edit);
      if (tallies == nullptr) {
        learner_.Learn(features, mends);
      } else {
        Count((*tallies)[static_cast<std::size_t>(edit.kind)], learner_.Score(features) > 0, mends);
      }
    }
  }

  static void Count(Tally& tally, bool found, bool mends) {
    tally.found += found && mends ? 1 : 0;
    tally.wronglyFound += found && !mends ? 1 : 0;
    tally.missed += !found && mends ? 1 : 0;
  }

  Lexicon lexicon_;
  Tagger tagger_;
  NgramModel ngrams_;
  Corrupter corrupter_;
  Learner learner_;
  std::vector<Tokens> sentences_;
};

}  // namespace

void TrainRanker(const std::filesystem::path& tables, const std::filesystem::path& slashTagged,
                 const std::filesystem::path& underscoreTagged, int sentences,
                 const std::filesystem::path& model) {
  const TableFile file(tables);
  RankerTrainer trainer(file);
  trainer.Read(slashTagged, underscoreTagged);
  trainer.Train(static_cast<std::size_t>(sentences));
  TableWriter writer;
  writer.AddArray("ranker.weights", trainer.Weights());
  writer.Write(model);
}

}  // namespace tolvex::databuild
