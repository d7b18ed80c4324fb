// Recall and false alarms of the check engine on files of sentences, one a line.
#include <fmt/format.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "engine/tolvex.h"

namespace {

struct Counts {
  int sentences = 0;
  int errors = 0;
  int watch = 0;
  std::map<std::string, int> codes;
};

double Percent(int part, int whole) { return whole == 0 ? 0 : 100.0 * part / whole; }

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

int Run(const std::vector<std::string>& args) {
  if (args.size() < 2) throw std::invalid_argument("usage: engine_quality DATA_DIR [--show] FILE...");
  const tolvex::Engine engine(args[0]);
  bool show = false;
  for (std::size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--show") {
      show = true;
    } else {
      Print(args[i], Judge(engine, args[i], show));
    }
  }
  return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return EXIT_FAILURE;
  }
}
