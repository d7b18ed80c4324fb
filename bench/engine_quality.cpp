// Recall and false alarms of the check engine on files of sentences, one a line, or of learners' pairs.
#include <map>

#include "bench/statistics.h"
#include "tests/engine/learner_pairs.h"

namespace {

struct Counts {
  int sentences = 0;
  int errors = 0;
  int watch = 0;
  std::map<std::string, int> codes;
};

using tolvex::test::Percent;

void Show(const tolvex::Judgement& judgement) {
  fmt::print("{} {} | {} | {}\n", static_cast<int>(judgement.verdict), judgement.errcode, judgement.marked,
             judgement.verdict == tolvex::Verdict::kRight ? "" : judgement.corrected);
}

Counts Judge(const tolvex::Engine& engine, const std::string& path, bool show) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path);
  Counts counts;
  for (std::string line; std::getline(in, line);) {
    if (line.empty()) continue;
    const tolvex::Judgement judgement = engine.Judge(line);
    ++counts.sentences;
    counts.errors += judgement.verdict == tolvex::Verdict::kErrors ? 1 : 0;
    counts.watch += judgement.verdict == tolvex::Verdict::kWatch ? 1 : 0;
    if (judgement.verdict != tolvex::Verdict::kRight) ++counts.codes[judgement.errcode];
    if (show) Show(judgement);
  }
  return counts;
}

void Print(const std::string& path, const Counts& counts) {
  fmt::print("{}: {} sentences, ERRS {} ({:.1f} %), ERRS or WARN {} ({:.1f} %)\n ", path, counts.sentences,
             counts.errors, Percent(counts.errors, counts.sentences), counts.errors + counts.watch,
             Percent(counts.errors + counts.watch, counts.sentences));
  for (const auto& [code, count] : counts.codes) fmt::print(" {}:{}", code, count);
  fmt::print("\n");
}

void PrintRow(const std::string& name, const tolvex::test::PairCounts& counts) {
  fmt::print("{:<20} {:>5} {:>8.1f} {:>8.1f} {:>9.1f} {:>8.1f}\n", name, counts.pairs,
             Percent(counts.refused, counts.pairs), Percent(counts.categorised, counts.pairs),
             Percent(counts.corrected, counts.pairs), Percent(counts.falseAlarms, counts.pairs));
}

void PrintPairs(const tolvex::Engine& engine, const std::string& path, bool show) {
  const auto report = tolvex::test::JudgePairs(engine, tolvex::test::ReadPairs(path));
  fmt::print("{:<20} pairs  refused category corrected   alarms (%)\n", "group");
  for (const auto& [group, counts] : report.groups) PrintRow(group, counts);
  PrintRow("all", report.all);
  if (!show) return;
  for (const std::string& miss : report.misses) fmt::print("{}\n", miss);
}

void Run(const std::vector<std::string>& args) {
  if (args.size() < 2)
    throw std::invalid_argument("usage: engine_quality DATA_DIR [--show] [--pairs] FILE...");
  const tolvex::Engine engine(args[0]);
  bool show = false;
  bool pairs = false;
  for (std::size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--show") {
      show = true;
    } else if (args[i] == "--pairs") {
      pairs = true;
    } else if (pairs) {
      PrintPairs(engine, args[i], show);
    } else {
      Print(args[i], Judge(engine, args[i], show));
    }
  }
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, Run); }
