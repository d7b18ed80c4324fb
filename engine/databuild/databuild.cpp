// databuild: trains the models and compiles the engine's tables. Run without arguments for its usage.
#include "engine/databuild/databuild.h"

#include <fmt/format.h>

#include <cstdio>
#include <stdexcept>
#include <string_view>

#include "engine/databuild/detector/detector_data.h"

namespace {

constexpr std::string_view kUsage =
    "usage:\n"
    "  databuild tagger EWT_TAGGED MASC_TAGGED MODEL   train the tagger\n"
    "  databuild counts COUNTS < TEXT                  count words, one sentence a line\n"
    "  databuild ngrams TAGGER_MODEL EWT_TAGGED MASC_TAGGED MODEL < TEXT\n"
    "  databuild ranker TABLES EWT_TAGGED MASC_TAGGED SENTENCES MODEL < TEXT\n"
    "  databuild tables MODEL_DIR COUNTS VERBS NAMES SCOWL_DIR WORDNET_DIR HUNSPELL_STEM TABLES RULES...\n"
    "  databuild parser DICTIONARY_DIR SCOWL_DIR LEVEL TO_DIR\n"
    "  databuild detector-vocabulary TABLES VOCABULARY TEXT[:WEIGHT]...\n"
    "  databuild detector-examples TABLES VOCABULARY PART PARTS EXAMPLES TEXT[:WEIGHT]...\n"
    "  databuild mistakes TABLES EACH < TEXT           show mistakes as the detector learns them\n";

using tolvex::databuild::Sources;

std::vector<tolvex::databuild::WeightedText> Texts(const std::vector<std::string>& args, std::size_t from) {
  std::vector<tolvex::databuild::WeightedText> texts;
  for (std::size_t i = from; i < args.size(); ++i)
    texts.push_back(tolvex::databuild::ReadWeightedText(args[i]));
  return texts;
}

int Run(const std::vector<std::string>& args) {
  const std::string step = args.empty() ? "" : args[0];
  if (step == "tagger" && args.size() == 4) {
    tolvex::databuild::TrainTagger(args[1], args[2], args[3]);
  } else if (step == "counts" && args.size() == 2) {
    tolvex::databuild::CountWords(args[1]);
  } else if (step == "ngrams" && args.size() == 5) {
    tolvex::databuild::TrainNgrams(args[1], args[2], args[3], args[4]);
  } else if (step == "ranker" && args.size() == 6) {
    tolvex::databuild::TrainRanker(args[1], args[2], args[3], std::stoi(args[4]), args[5]);
  } else if (step == "tables" && args.size() > 9) {
    Sources sources{args[1], args[2], args[3], args[4], args[5], args[6], args[7], {}};
    sources.rules.assign(args.begin() + 9, args.end());
    tolvex::databuild::CompileTables(sources, args[8]);
  } else if (step == "parser" && args.size() == 5) {
    tolvex::databuild::TrimParserDictionary(args[1], args[2], std::stoi(args[3]), args[4]);
  } else if (step == "detector-vocabulary" && args.size() > 3) {
    tolvex::databuild::MakeDetectorVocabulary(args[1], args[2], Texts(args, 3));
  } else if (step == "detector-examples" && args.size() > 6) {
    tolvex::databuild::MakeDetectorExamples(args[1], args[2], std::stoi(args[3]), std::stoi(args[4]), args[5],
                                            Texts(args, 6));
  } else if (step == "mistakes" && args.size() == 3) {
    tolvex::databuild::ShowMistakes(args[1], std::stoi(args[2]));
  } else {
    throw std::invalid_argument(std::string(kUsage));
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    fmt::print(stderr, "databuild: {}\n", error.what());
    return 1;
  }
}
