// Counts word pairs in running text and keeps those that occur together more often than by chance.
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <stdexcept>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "engine/databuild/bankbuild.h"
#include "engine/tagger/tagger.h"
#include "engine/wordbank/pair.h"

namespace tolvex::databuild {
namespace {

using wexbin::Pair;
using wexbin::PairKind;

constexpr int kLeastCount = 5;
constexpr int kModernWeight = 3;  // present-day text against a library of older novels
constexpr std::size_t kMostPartners = 40;
constexpr double kLeastScore = 3.84;  // chance alone reaches more in one case of twenty

class Numbers {
 public:
  std::uint32_t Of(const std::string& word) {
    const auto [at, isNew] = numbers_.emplace(word, static_cast<std::uint32_t>(words_.size()));
    if (isNew) words_.push_back(word);
    return at->second;
  }
  const std::string& Word(std::uint32_t number) const { return words_[number]; }

 private:
  std::unordered_map<std::string, std::uint32_t> numbers_;
  std::vector<std::string> words_;
};

struct Key {
  std::uint32_t kind, head, partner;
  std::uint64_t Packed() const { return std::uint64_t{kind} << 56U | std::uint64_t{head} << 28U | partner; }
  static Key Of(std::uint64_t packed) {
    return {static_cast<std::uint32_t>(packed >> 56U), static_cast<std::uint32_t>(packed >> 28U & 0xfffffffU),
            static_cast<std::uint32_t>(packed & 0xfffffffU)};
  }
};

using Patterns = std::map<std::uint8_t, int>;

int Total(const Patterns& patterns) {
  int total = 0;
  for (const auto& [pattern, count] : patterns) total += count;
  return total;
}

double Term(double seen, double expected) { return seen > 0 ? seen * std::log(seen / expected) : 0; }

// Dunning's log-likelihood ratio of a table of two by two; 0 when the pair is rarer than by chance.
double LogLikelihood(double both, double head, double partner, double all) {
  if (both * all <= head * partner) return 0;
  return 2 * (Term(both, head * partner / all) + Term(head - both, head * (all - partner) / all) +
              Term(partner - both, partner * (all - head) / all) +
              Term(all - head - partner + both, (all - head) * (all - partner) / all));
}

struct Scored {
  Key key;
  double score = 0;
  int count = 0;
  std::uint8_t pattern = 0;
};

bool IsStronger(const Scored& a, const Scored& b) {
  return std::tuple(a.score, a.count, b.key.partner) > std::tuple(b.score, b.count, a.key.partner);
}

class PairCounts {
 public:
  void Add(const Pair& pair, int weight) {
    const Key key{static_cast<std::uint32_t>(pair.kind), words_.Of(pair.head), words_.Of(pair.partner)};
    counts_[key.Packed()][pair.pattern.Code()] += weight;
  }

  void Write(const std::filesystem::path& path) {
    std::ofstream out(path);
    for (const auto& [name, partners] : Best()) {
      out << name;
      for (const Scored& s : partners) {
        out << fmt::format("\t{}:{}:{}", words_.Word(s.key.partner), s.count, s.pattern);
      }
      out << '\n';
    }
    if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
  }

 private:
  // "CNJ rain" with the partners, the strongest first.
  std::map<std::string, std::vector<Scored>> Best() {
    std::map<std::string, std::vector<Scored>> best;
    for (const Scored& scored : Score()) {
      const auto code = wexbin::CodeOf(static_cast<PairKind>(scored.key.kind));
      best[fmt::format("{} {}", code, words_.Word(scored.key.head))].push_back(scored);
    }
    for (auto& [name, partners] : best) {
      std::sort(partners.begin(), partners.end(), IsStronger);
      partners.resize(std::min(partners.size(), kMostPartners));
    }
    return best;
  }

  // A verb with a preposition is compared with other verbs before the same preposition only: what is true of
  // "at" and "time" alone says nothing about "think at the time".
  Key GroupOf(const Key& key) {
    const std::string& partner = words_.Word(key.partner);
    const auto blank = partner.find(' ');
    return {key.kind, words_.Of(blank == std::string::npos ? "" : partner.substr(blank)), 0};
  }

  void SumUp() {
    for (const auto& [packed, patterns] : counts_) {
      const Key key = Key::Of(packed);
      const Key group = GroupOf(key);
      const int count = Total(patterns);
      all_[group.Packed()] += count;
      heads_[Key{key.kind, key.head, group.head}.Packed()] += count;
      partners_[Key{key.kind, key.partner, 0}.Packed()] += count;
    }
  }

  std::vector<Scored> Score() {
    SumUp();
    std::vector<Scored> scored;
    for (const auto& [packed, patterns] : counts_) {
      const Key key = Key::Of(packed);
      const Key group = GroupOf(key);
      const int count = Total(patterns);
      const double score =
          LogLikelihood(count, heads_.at(Key{key.kind, key.head, group.head}.Packed()),
                        partners_.at(Key{key.kind, key.partner, 0}.Packed()), all_.at(group.Packed()));
      if (count >= kLeastCount && score >= LeastScore(key))
        scored.push_back({key, score, count, Commonest(patterns)});
    }
    return scored;
  }

  // Adverbs of degree go with most adjectives, so "very" is no more than chance anywhere: it is kept all the
  // same.
  static double LeastScore(const Key& key) {
    return static_cast<PairKind>(key.kind) == PairKind::kAdjectiveAdverb ? 0 : kLeastScore;
  }

  static std::uint8_t Commonest(const Patterns& patterns) {
    return std::max_element(patterns.begin(), patterns.end(),
                            [](const auto& a, const auto& b) { return a.second < b.second; })
        ->first;
  }

  Numbers words_;
  std::unordered_map<std::uint64_t, Patterns> counts_;
  std::unordered_map<std::uint64_t, double> all_;
  std::unordered_map<std::uint64_t, double> heads_;
  std::unordered_map<std::uint64_t, double> partners_;
};

}  // namespace

void CountPairs(std::istream& text, const TableFile& tables, const std::filesystem::path& pairs) {
  const Lexicon lexicon(tables);
  const Tagger tagger(tables);
  PairCounts counts;
  int weight = 1;
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with('#')) {
      weight = line == "# modern" ? kModernWeight : 1;
      continue;
    }
    auto tokens = Tokenize(line);
    tagger.TagAll(tokens);
    for (const Pair& pair : wexbin::FindPairs(tokens, lexicon)) counts.Add(pair, weight);
  }
  counts.Write(pairs);
}

}  // namespace tolvex::databuild
