// Recall of a detector's weights at fixed shares of alarms, alone and beside the engine, and its time.
#include "bench/statistics.h"
#include "engine/detector/detector.h"
#include "engine/lexicon/lexicon.h"
#include "engine/tagger/tagger.h"
#include "engine/tolvex.h"

namespace {

struct Judged {
  std::string text;
  double odds = 0;
  bool refused = false;  // by the engine as it is
};

class Bench {
 public:
  Bench(const std::string& dataDir, const std::string& model)
      : engine_(dataDir),
        tables_(dataDir + "/tolvex.tables"),
        lexicon_(tables_),
        tagger_(tables_),
        weights_(model),
        detector_(weights_) {}

  std::vector<Judged> Judge(const std::string& path, bool show) {
    std::vector<Judged> judged;
    for (const std::string& line : bench::ReadLines(path)) {
      auto tokens = tolvex::Tokenize(line);
      tagger_.TagAll(tokens);
      const tolvex::Sentence sentence(std::move(tokens), lexicon_);
      tolvex::Detection detection;
      times_.push_back(bench::Milliseconds([&] { detection = detector_.Examine(sentence); }));
      const bool refused = engine_.Judge(line).verdict == tolvex::Verdict::kErrors;
      judged.push_back({line, detection.odds, refused});
      if (show) {
        fmt::print("{:8.4f} {} {} | {}\n", detection.odds, refused ? "ERRS" : "    ",
                   sentence.At(detection.WorstToken()).text, line);
      }
    }
    return judged;
  }

  void PrintTimes() const { bench::Print("a sentence in the detector", times_); }

 private:
  tolvex::Engine engine_;
  tolvex::TableFile tables_;
  tolvex::Lexicon lexicon_;
  tolvex::Tagger tagger_;
  tolvex::TableFile weights_;
  tolvex::Detector detector_;
  std::vector<double> times_;
};

// The odds that at most this share of the sentences exceed.
double Threshold(std::vector<Judged> right, double alarms) {
  std::ranges::sort(right, std::greater{}, &Judged::odds);
  const auto at = static_cast<std::size_t>(alarms * static_cast<double>(right.size()));
  return at < right.size() ? right[at].odds : 0;
}

template <class Condition>
double Share(const std::vector<Judged>& sentences, const Condition& condition) {
  const auto count = std::ranges::count_if(sentences, condition);
  return 100.0 * static_cast<double>(count) / static_cast<double>(sentences.size());
}

void Report(const std::vector<Judged>& right, const std::vector<Judged>& wrong) {
  for (const double alarms : {0.01, 0.02, 0.03, 0.05, 0.10}) {
    const double threshold = Threshold(right, alarms);
    const auto found = [&](const Judged& one) { return one.odds > threshold; };
    fmt::print("alone: {:4.1f} % alarms, recall {:5.1f} %, odds above {:.3f}\n", 100 * alarms,
               Share(wrong, found), threshold);
  }
  const auto refused = [](const Judged& one) { return one.refused; };
  fmt::print("engine: alarms {:.2f} %, recall {:.1f} %\n", Share(right, refused), Share(wrong, refused));
  auto passed = right;
  std::erase_if(passed, refused);
  for (const double more : {0.005, 0.01, 0.02}) {
    const double share = more * static_cast<double>(right.size()) / static_cast<double>(passed.size());
    const double threshold = Threshold(passed, share);
    const auto either = [&](const Judged& one) { return one.refused || one.odds > threshold; };
    fmt::print("engine or detector: alarms {:.2f} %, recall {:.1f} %, odds above {:.3f}\n",
               Share(right, either), Share(wrong, either), threshold);
  }
}

void Run(const std::vector<std::string>& args) {
  const bool show = args.size() == 5 && args[4] == "--show";
  if (args.size() != 4 && !show)
    throw std::invalid_argument("usage: detector_quality DATA_DIR MODEL RIGHT WRONG [--show]");
  Bench bench(args[0], args[1]);
  const auto right = bench.Judge(args[2], show);
  const auto wrong = bench.Judge(args[3], show);
  Report(right, wrong);
  bench.PrintTimes();
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, Run); }
