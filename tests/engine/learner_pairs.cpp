#include "tests/engine/learner_pairs.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
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

// One choice of a correction for each fault, counted through like the digits of a number.
class Choice {
 public:
  explicit Choice(const std::vector<Fault>& faults) : faults_(faults), chosen_(faults.size(), 0) {
    std::ranges::sort(faults_, {}, [](const Fault& fault) { return fault.span.begin; });
  }

  std::string Apply(std::string text) const {
    for (std::size_t i = faults_.size(); i-- > 0;) {
      const Fault& fault = faults_[i];
      if (fault.corrections.empty()) continue;
      text.replace(fault.span.begin, fault.span.end - fault.span.begin, fault.corrections[chosen_[i]]);
    }
    return text;
  }

  bool Next() {
    for (std::size_t i = 0; i < faults_.size(); ++i) {
      if (++chosen_[i] < faults_[i].corrections.size()) return true;
      chosen_[i] = 0;
    }
    return false;
  }

 private:
  std::vector<Fault> faults_;
  std::vector<std::size_t> chosen_;
};

// Blanks and the first capital are not what a choice is about.
std::string Bare(const std::string& text) {
  std::string bare;
  std::ranges::copy_if(base::Lower(Spelled(text)), std::back_inserter(bare), [](char c) { return c != ' '; });
  return bare;
}

bool Offers(const Judgement& judgement, const LearnerPair& pair) {
  Choice choice(judgement.faults);
  do {
    if (Bare(choice.Apply(pair.wrong)) == Bare(pair.right)) return true;
  } while (choice.Next());
  return false;
}

bool IsWanted(const std::string& errcode, const LearnerPair& pair) {
  return std::ranges::any_of(
      pair.codes, [&](const std::string& code) { return errcode.substr(0, 2) == code.substr(0, 2); });
}

bool IsCorrected(const Judgement& judgement, const LearnerPair& pair) {
  return Spelled(judgement.corrected) == Spelled(pair.right);
}

void Tally(PairCounts& counts, const LearnerPair& pair, const Judgement& wrong, const Judgement& right) {
  counts.wrong.Add(wrong);
  counts.right.Add(right);
  if (wrong.verdict != Verdict::kErrors) return;
  counts.categorised += IsWanted(wrong.errcode, pair) ? 1 : 0;
  counts.corrected += IsCorrected(wrong, pair) ? 1 : 0;
  counts.offered += IsCorrected(wrong, pair) || Offers(wrong, pair) ? 1 : 0;
}

std::string Described(const char* what, const LearnerPair& pair, const Judgement& judgement) {
  const std::string kind = pair.codes.empty() ? pair.group : pair.group + " " + pair.codes[0];
  return fmt::format("{} [{}] {} {} | {} | {}", what, kind, static_cast<int>(judgement.verdict),
                     judgement.errcode, judgement.marked, judgement.corrected);
}

void NoteMisses(PairReport& report, const LearnerPair& pair, const Judgement& wrong, const Judgement& right) {
  if (wrong.verdict != Verdict::kErrors)
    report.misses.push_back(Described("missed", pair, wrong));
  else if (!pair.codes.empty() && !IsWanted(wrong.errcode, pair))
    report.misses.push_back(Described("other category", pair, wrong));
  else if (!IsCorrected(wrong, pair))
    report.misses.push_back(Described("other correction", pair, wrong) + " | wanted: " + pair.right);
  if (right.verdict == Verdict::kErrors) report.misses.push_back(Described("FALSE ALARM", pair, right));
  if (right.verdict == Verdict::kWatch) report.misses.push_back(Described("false watch", pair, right));
}

}  // namespace

void VerdictCounts::Add(const Judgement& judgement) {
  ++sentences;
  if (judgement.verdict == Verdict::kRight) return;
  const bool isError = judgement.verdict == Verdict::kErrors;
  ++(isError ? errors : watch);
  ++(isError ? errorCodes : watchCodes)[judgement.errcode];
}

bool HasSpellingError(const Judgement& judgement) {
  return std::ranges::any_of(judgement.faults, [](const Fault& fault) {
    return fault.level == Verdict::kErrors && fault.code.starts_with("SP");
  });
}

std::vector<LearnerPair> ReadPairs(const std::filesystem::path& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  std::vector<LearnerPair> pairs;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.empty() || line[0] == '#') continue;
    auto columns = base::Split(line, "\t");
    if (columns.size() == 3) columns.insert(columns.begin() + 1, "");
    if (columns.size() != 4)
      throw std::runtime_error(fmt::format("{}:{}: three or four columns wanted", path.string(), number));
    auto codes = columns[1].empty() ? std::vector<std::string>() : base::Split(columns[1], "|");
    pairs.push_back({columns[0], std::move(codes), columns[2], columns[3], number});
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
    if (!HasSpellingError(wrong)) Tally(report.withoutSpelling, pair, wrong, right);
    NoteMisses(report, pair, wrong, right);
  }
  return report;
}

}  // namespace tolvex::test
