// Judges senseless sentences for a given time: engine_fuzz DATA_DIR SENTENCES SECONDS [SEED]. Ends with an
// error at the first answer that contradicts itself; a crash or a sanitizer ends it earlier.
#include <fmt/format.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "tests/engine/random_sentences.h"

namespace {

std::vector<std::string> ReadLines(const std::string& path) {
  std::ifstream in(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') lines.push_back(line);
  }
  if (lines.empty()) throw std::runtime_error("no sentences in " + path);
  return lines;
}

int Run(const std::vector<std::string>& args) {
  if (args.size() < 3) throw std::invalid_argument("usage: engine_fuzz DATA_DIR SENTENCES SECONDS [SEED]");
  const tolvex::Engine engine(args[0]);
  const unsigned seed = args.size() > 3 ? static_cast<unsigned>(std::stoul(args[3])) : std::random_device()();
  tolvex::test::RandomSentences sentences(seed, ReadLines(args[1]));
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(std::stoi(args[2]));
  long count = 0;
  for (; std::chrono::steady_clock::now() < end; ++count) {
    const std::string sentence = sentences.Next();
    const std::string problem = tolvex::test::ContradictionIn(sentence, engine.Judge(sentence));
    if (!problem.empty()) throw std::runtime_error(fmt::format("seed {}: {}: {}", seed, problem, sentence));
  }
  fmt::print("seed {}: {} sentences, nothing to complain of\n", seed, count);
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
