#include "tests/engine/learner_pairs.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>

#include "base/text.h"

namespace tolvex::test {
namespace {

std::string Spelled(std::string text) {
  static const std::array<std::pair<std::string, std::string>, 3> kShort = {
      {{"can't", "cannot"}, {"won't", "will not"}, {"n't", " not"}}};
  for (const auto& [from, to] : kShort) text = base::Replace(text, from, to);
  return text;
}

bool IsWanted(const std::string& errcode, const LearnerPair& pair) {
  return std::ranges::any_of(
      pair.codes, [&](const std::string& code) { return errcode.substr(0, 2) == code.substr(0, 2); });
}

void Tally(PairCounts& counts, const LearnerPair& pair, const Judgement& wrong, const Judgement& right) {
  const bool refused = wrong.verdict == Verdict::kErrors;
  ++counts.pairs;
  counts.refused += refused ? 1 : 0;
  counts.categorised += refused && IsWanted(wrong.errcode, pair) ? 1 : 0;
  counts.corrected += refused && Spelled(wrong.corrected) == Spelled(pair.right) ? 1 : 0;
  counts.falseAlarms += right.verdict == Verdict::kErrors ? 1 : 0;
}

std::string Described(const char* what, const LearnerPair& pair, const Judgement& judgement) {
  return fmt::format("{} [{} {}] {} {} | {} | {}", what, pair.group, pair.codes[0],
                     static_cast<int>(judgement.verdict), judgement.errcode, judgement.marked,
                     judgement.corrected);
}

void NoteMisses(PairReport& report, const LearnerPair& pair, const Judgement& wrong, const Judgement& right) {
  if (wrong.verdict != Verdict::kErrors)
    report.misses.push_back(Described("missed", pair, wrong));
  else if (!IsWanted(wrong.errcode, pair))
    report.misses.push_back(Described("other category", pair, wrong));
  else if (Spelled(wrong.corrected) != Spelled(pair.right))
    report.misses.push_back(Described("other correction", pair, wrong) + " | wanted: " + pair.right);
  if (right.verdict == Verdict::kErrors) report.misses.push_back(Described("FALSE ALARM", pair, right));
}

}  // namespace

std::vector<LearnerPair> ReadPairs(const std::filesystem::path& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  std::vector<LearnerPair> pairs;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.empty() || line[0] == '#') continue;
    const auto columns = base::Split(line, "\t");
    if (columns.size() != 4)
      throw std::runtime_error(fmt::format("{}:{}: four columns wanted", path.string(), number));
    pairs.push_back({columns[0], base::Split(columns[1], "|"), columns[2], columns[3]});
  }
  return pairs;
}

PairReport JudgePairs(const Engine& engine, const std::vector<LearnerPair>& pairs) {
  PairReport report;
  for (const LearnerPair& pair : pairs) {
    const Judgement wrong = engine.Judge(pair.wrong);
    const Judgement right = engine.Judge(pair.right);
    Tally(report.groups[pair.group], pair, wrong, right);
    Tally(report.all, pair, wrong, right);
    NoteMisses(report, pair, wrong, right);
  }
  return report;
}

}  // namespace tolvex::test
