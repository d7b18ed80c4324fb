#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <stdexcept>
#include <unordered_map>

#include "base/text.h"
#include "engine/databuild/databuild.h"
#include "engine/databuild/source_files.h"
#include "engine/tables/hash.h"
#include "engine/tagger/tagger.h"

namespace tolvex::databuild {
namespace {

constexpr int kRounds = 6;
constexpr std::size_t kHeldBackSentences = 1500;
constexpr float kScale = 100;          // weights are kept as hundredths
constexpr int kLeastWeight = 10;       // smaller ones are dropped
constexpr int kFixedCount = 25;        // a word seen so often…
constexpr double kFixedShare = 0.985;  // …and so clearly with one tag needs no weighing

struct TaggedSentence {
  std::vector<Token> tokens;
  std::vector<int> tags;
};

struct FeatureWeights {
  std::array<float, kTagCount> weight = {};
  std::array<float, kTagCount> sum = {};
  std::array<int, kTagCount> since = {};
};

using Weights = std::unordered_map<std::uint64_t, FeatureWeights>;
using FixedWords = std::unordered_map<std::string, int>;

std::string CommonName(const std::string& tag) {
  if (tag == "(" || tag == "_(") return "-LRB-";
  return tag == ")" ? "-RRB-" : tag;
}

bool AddTagged(TaggedSentence& sentence, const std::string& item, char separator) {
  const auto at = item.rfind(separator);
  if (at == std::string::npos || at == 0) return false;
  const Tag tag = TagFromName(CommonName(item.substr(at + 1)));
  if (tag == Tag::XX) return false;
  Token token;
  token.text = item.substr(0, at);
  token.lower = base::Lower(token.text);
  sentence.tokens.push_back(std::move(token));
  sentence.tags.push_back(static_cast<int>(tag));
  return true;
}

void ReadTagged(const std::filesystem::path& path, char separator, std::vector<TaggedSentence>& sentences) {
  ReadLines(path, [&](const std::string& line) {
    TaggedSentence sentence;
    const auto items = SplitAtBlanks(line);
    const bool whole = std::ranges::all_of(
        items, [&](const std::string& item) { return AddTagged(sentence, item, separator); });
    if (whole && sentence.tokens.size() > 1) sentences.push_back(std::move(sentence));
  });
}

FixedWords FindFixedWords(const std::vector<TaggedSentence>& sentences) {
  std::unordered_map<std::string, std::map<int, int>> counts;
  for (const auto& sentence : sentences) {
    const auto words = TaggerWords(sentence.tokens);
    for (std::size_t i = 0; i < words.size(); ++i) ++counts[words[i]][sentence.tags[i]];
  }
  FixedWords fixed;
  for (const auto& [word, tags] : counts) {
    int total = 0;
    for (const auto& [tag, count] : tags) total += count;
    const auto best = std::max_element(tags.begin(), tags.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    if (total >= kFixedCount && best->second >= kFixedShare * total) fixed[word] = best->first;
  }
  return fixed;
}

class Trainer {
 public:
  explicit Trainer(FixedWords fixed) : fixed_(std::move(fixed)) {}

  /// One pass over a sentence, learning when asked to. Returns the number of right tags.
  int Pass(const TaggedSentence& sentence, bool learn) {
    const auto words = TaggerWords(sentence.tokens);
    int right = 0;
    int previous = kStartTag;
    int beforePrevious = kBeforeStartTag;
    for (std::size_t i = 0; i < words.size(); ++i) {
      const int tag = Decide(sentence, words, i, previous, beforePrevious, learn);
      right += tag == sentence.tags[i] ? 1 : 0;
      beforePrevious = previous;
      previous = tag;
    }
    return right;
  }

  void Average() {
    for (auto& [key, feature] : weights_) {
      for (int tag = 0; tag < kTagCount; ++tag) {
        const float sum =
            feature.sum[tag] + static_cast<float>(now_ - feature.since[tag]) * feature.weight[tag];
        feature.weight[tag] = std::round(sum / static_cast<float>(now_) * kScale);
        if (std::abs(feature.weight[tag]) < kLeastWeight) feature.weight[tag] = 0;
      }
    }
  }

  const Weights& GetWeights() const { return weights_; }
  const FixedWords& GetFixed() const { return fixed_; }

 private:
  int Decide(const TaggedSentence& sentence, const std::vector<std::string>& words, std::size_t i,
             int previous, int beforePrevious, bool learn) {
    const auto fixed = fixed_.find(words[i]);
    const bool maybeName = i > 0 && sentence.tokens[i].IsCapitalised();
    if (fixed != fixed_.end() && !maybeName) return fixed->second;
    const Features features = FeaturesAt(sentence.tokens, words, i, previous, beforePrevious);
    const int best = Best(features);
    if (learn) {
      ++now_;
      if (best != sentence.tags[i]) Correct(features, sentence.tags[i], best);
    }
    return best;
  }

  int Best(const Features& features) const {
    std::array<float, kTagCount> scores = {};
    for (const std::uint64_t feature : features) {
      const auto found = weights_.find(feature);
      if (found == weights_.end()) continue;
      for (int tag = 0; tag < kTagCount; ++tag) scores[tag] += found->second.weight[tag];
    }
    return static_cast<int>(std::max_element(scores.begin(), scores.end()) - scores.begin());
  }

  void Correct(const Features& features, int right, int wrong) {
    for (const std::uint64_t key : features) {
      FeatureWeights& feature = weights_[key];
      Change(feature, right, 1);
      Change(feature, wrong, -1);
    }
  }

  void Change(FeatureWeights& feature, int tag, float by) const {
    feature.sum[tag] += static_cast<float>(now_ - feature.since[tag]) * feature.weight[tag];
    feature.since[tag] = now_;
    feature.weight[tag] += by;
  }

  FixedWords fixed_;
  Weights weights_;
  int now_ = 0;
};

std::size_t FreeSlot(const std::vector<TagSlot>& slots, std::uint64_t hash) {
  std::size_t i = hash & (slots.size() - 1);
  while (slots[i].key != 0) i = (i + 1) & (slots.size() - 1);
  return i;
}

std::size_t TableSize(std::size_t items) {
  std::size_t size = 16;
  while (size * 2 < items * 3) size *= 2;
  return size;
}

std::vector<TagWeight> WeightList(const FeatureWeights& feature) {
  std::vector<TagWeight> list;
  for (int tag = 0; tag < kTagCount; ++tag) {
    const float value = std::clamp(feature.weight[tag], -32000.0F, 32000.0F);
    if (value != 0) list.push_back({static_cast<std::int16_t>(value), static_cast<std::uint8_t>(tag), 0});
  }
  if (!list.empty()) list.back().last = 1;
  return list;
}

void AddFeatureTables(const Weights& weights, TableWriter& writer) {
  const std::map<std::uint64_t, FeatureWeights> ordered(weights.begin(), weights.end());
  std::vector<std::pair<std::uint64_t, std::uint32_t>> used;
  std::vector<TagWeight> all(1);
  for (const auto& [key, feature] : ordered) {
    const auto list = WeightList(feature);
    if (list.empty()) continue;
    used.emplace_back(key, static_cast<std::uint32_t>(all.size()));
    all.insert(all.end(), list.begin(), list.end());
  }
  std::vector<TagSlot> slots(TableSize(used.size()));
  for (const auto& [key, first] : used) slots[FreeSlot(slots, key)] = {TableKey(key), first};
  fmt::print("features {} weights {}\n", used.size(), all.size());
  writer.AddArray("tag.features", slots);
  writer.AddArray("tag.weights", all);
}

void AddFixedTable(const FixedWords& fixed, TableWriter& writer) {
  const std::map<std::string, int> ordered(fixed.begin(), fixed.end());
  std::vector<TagSlot> slots(TableSize(ordered.size()));
  for (const auto& [word, tag] : ordered) {
    const std::uint64_t hash = HashText(word);
    slots[FreeSlot(slots, hash)] = {TableKey(hash), static_cast<std::uint32_t>(tag)};
  }
  writer.AddArray("tag.fixed", slots);
}

void PrintAccuracy(Trainer& trainer, const std::vector<TaggedSentence>& sentences) {
  std::size_t right = 0;
  std::size_t total = 0;
  for (const auto& sentence : sentences) {
    right += static_cast<std::size_t>(trainer.Pass(sentence, false));
    total += sentence.tags.size();
  }
  fmt::print("accuracy on {} sentences held back: {:.4f}\n", sentences.size(),
             static_cast<double>(right) / static_cast<double>(total));
}

// std::shuffle differs between libraries; this is the same order everywhere.
void Shuffle(std::vector<TaggedSentence>& sentences, std::mt19937& random) {
  for (std::size_t i = sentences.size(); i > 1; --i) std::swap(sentences[i - 1], sentences[random() % i]);
}

}  // namespace

void TrainTagger(const std::filesystem::path& slashTagged, const std::filesystem::path& underscoreTagged,
                 const std::filesystem::path& model) {
  std::vector<TaggedSentence> sentences;
  ReadTagged(slashTagged, '/', sentences);
  ReadTagged(underscoreTagged, '_', sentences);
  if (sentences.size() <= kHeldBackSentences) throw std::runtime_error("too few tagged sentences");
  std::mt19937 random(1);
  Shuffle(sentences, random);
  const std::vector<TaggedSentence> heldBack(sentences.end() - kHeldBackSentences, sentences.end());
  sentences.resize(sentences.size() - kHeldBackSentences);
  Trainer trainer(FindFixedWords(sentences));
  for (int round = 0; round < kRounds; ++round) {
    Shuffle(sentences, random);
    for (const auto& sentence : sentences) trainer.Pass(sentence, true);
  }
  trainer.Average();
  PrintAccuracy(trainer, heldBack);
  TableWriter writer;
  AddFeatureTables(trainer.GetWeights(), writer);
  AddFixedTable(trainer.GetFixed(), writer);
  writer.Write(model);
}

}  // namespace tolvex::databuild
