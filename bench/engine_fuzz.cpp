// Judges senseless sentences for a given time: engine_fuzz DATA_DIR SENTENCES SECONDS [SEED]. Ends with an
// error at the first answer that contradicts itself; a crash or a sanitizer ends it earlier.
#include "bench/statistics.h"
#include "tests/engine/random_sentences.h"

namespace {

void Run(const std::vector<std::string>& args) {
  if (args.size() < 3) throw std::invalid_argument("usage: engine_fuzz DATA_DIR SENTENCES SECONDS [SEED]");
  const tolvex::Engine engine(args[0]);
  const unsigned seed = args.size() > 3 ? static_cast<unsigned>(std::stoul(args[3])) : std::random_device()();
  tolvex::test::RandomSentences sentences(seed, bench::ReadLines(args[1]));
  const auto end = bench::Clock::now() + std::chrono::seconds(std::stoi(args[2]));
  long count = 0;
  for (; bench::Clock::now() < end; ++count) {
    const std::string sentence = sentences.Next();
    const std::string problem = tolvex::test::ContradictionIn(sentence, engine.Judge(sentence));
    if (!problem.empty()) throw std::runtime_error(fmt::format("seed {}: {}: {}", seed, problem, sentence));
  }
  fmt::print("seed {}: {} sentences, nothing to complain of\n", seed, count);
}

}  // namespace

int main(int argc, char** argv) { return bench::Main(argc, argv, Run); }
