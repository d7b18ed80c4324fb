// Recall and false alarms of the check engine on files of sentences, one a line, and on pairs (*.tsv) of a
// wrong and a right sentence. What each line of the answer counts is told in docs/engine.md.
#include <optional>
#include <set>

#include "bench/statistics.h"
#include "tests/engine/learner_pairs.h"

namespace {

using tolvex::test::HasSpellingError;
using tolvex::test::PairCounts;
using tolvex::test::Percent;
using tolvex::test::VerdictCounts;

struct Options {
  bool show = false;
  std::optional<int> remainder;  // only lines whose number divided by two leaves it
  std::set<int> faulty;          // lines of the next file that hold a true fault though they pass for right

  bool Takes(int line) const { return !remainder || line % 2 == *remainder; }
};

void Show(int line, const tolvex::Judgement& judgement) {
  fmt::print("{} {} {} | {} | {}\n", line, static_cast<int>(judgement.verdict), judgement.errcode,
             judgement.marked, judgement.verdict == tolvex::Verdict::kRight ? "" : judgement.corrected);
}

void PrintVerdicts(const char* which, const VerdictCounts& counts) {
  fmt::print(
      "  {:<28} {:>5} sentences, ERRS {:>4} ({:>4.1f} %), WARN {:>4} ({:>4.1f} %), together {:.1f} %\n",
      which, counts.sentences, counts.errors, Percent(counts.errors, counts.sentences), counts.watch,
      Percent(counts.watch, counts.sentences), Percent(counts.Alarms(), counts.sentences));
}

// "SP 14 (SP01 12, SP02 2); AG 3 (AG01 3)"
void PrintCodes(const char* which, const std::map<std::string, int>& codes) {
  struct Category {
    int count = 0;
    std::string codes;
  };
  std::map<std::string, Category> categories;
  for (const auto& [code, count] : codes) {
    Category& category = categories[code.substr(0, 2)];
    category.count += count;
    category.codes += fmt::format("{}{} {}", category.codes.empty() ? "" : ", ", code, count);
  }
  std::string text;
  for (const auto& [name, category] : categories)
    text += fmt::format("{}{} {} ({})", text.empty() ? "" : "; ", name, category.count, category.codes);
  if (!text.empty()) fmt::print("  {}: {}\n", which, text);
}

void PrintCodes(const VerdictCounts& counts) {
  PrintCodes("ERRS", counts.errorCodes);
  PrintCodes("WARN", counts.watchCodes);
}

void JudgeText(const tolvex::Engine& engine, const std::string& path, const Options& options) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path);
  VerdictCounts all;
  VerdictCounts withoutSpelling;
  VerdictCounts withoutFaulty;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.empty() || !options.Takes(number)) continue;
    const tolvex::Judgement judgement = engine.Judge(line);
    all.Add(judgement);
    if (!HasSpellingError(judgement)) withoutSpelling.Add(judgement);
    if (!options.faulty.contains(number)) withoutFaulty.Add(judgement);
    if (options.show) Show(number, judgement);
  }
  fmt::print("{}\n", path);
  PrintVerdicts("all", all);
  PrintVerdicts("without spelling faults", withoutSpelling);
  if (!options.faulty.empty()) PrintVerdicts("without lines known as faulty", withoutFaulty);
  PrintCodes(all);
}

void PrintRow(const std::string& name, const PairCounts& counts) {
  const int pairs = counts.wrong.sentences;
  fmt::print("  {:<48} {:>5} {:>6.1f} {:>6.1f} {:>9.1f} {:>6.1f} {:>6.1f} {:>7.1f} {:>6.1f}\n", name, pairs,
             Percent(counts.wrong.errors, pairs), Percent(counts.wrong.Alarms(), pairs),
             Percent(counts.categorised, pairs), Percent(counts.corrected, pairs),
             Percent(counts.offered, pairs), Percent(counts.right.errors, pairs),
             Percent(counts.right.Alarms(), pairs));
}

void JudgePairs(const tolvex::Engine& engine, const std::string& path, const Options& options) {
  auto pairs = tolvex::test::ReadPairs(path);
  std::erase_if(pairs, [&](const auto& pair) { return !options.Takes(pair.line); });
  const auto report = tolvex::test::JudgePairs(engine, pairs);
  fmt::print("{}\n  {:<48} pairs   ERRS  +WARN  category  first    any | right: ERRS +WARN (%)\n", path,
             "group");
  for (const auto& [group, counts] : report.groups) PrintRow(group, counts);
  PrintRow("without spelling faults", report.withoutSpelling);
  PrintRow("all", report.all);
  fmt::print(" wrong\n");
  PrintCodes(report.all.wrong);
  fmt::print(" right\n");
  PrintCodes(report.all.right);
  if (!options.show) return;
  for (const std::string& miss : report.misses) fmt::print("{}\n", miss);
}

std::set<int> ReadLineNumbers(const std::string& path) {
  std::set<int> numbers;
  for (const std::string& line : bench::ReadLines(path)) numbers.insert(std::stoi(line));
  return numbers;
}

void Run(const std::vector<std::string>& args) {
  if (args.size() < 2) {
    throw std::invalid_argument(
        "usage: engine_quality DATA_DIR [--show] [--odd|--even] { [--faulty LINE_NUMBERS] SENTENCES.txt | "
        "PAIRS.tsv }...");
  }
  const tolvex::Engine engine(args[0]);
  Options options;
  for (std::size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--show") {
      options.show = true;
    } else if (args[i] == "--odd" || args[i] == "--even") {
      options.remainder = args[i] == "--odd" ? 1 : 0;
    } else if (args[i] == "--faulty" && i + 1 < args.size()) {
      options.faulty = ReadLineNumbers(args[++i]);
    } else if (args[i].ends_with(".tsv")) {
      JudgePairs(engine, args[i], options);
    } else {
      JudgeText(engine, args[i], options);
      options.faulty.clear();
    }
  }
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, Run); }
